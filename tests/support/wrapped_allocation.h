// Tells a test of every request for memory, and lets it refuse them: operator new of the program and of the libraries,
// and the C functions as the project's own objects call them (the linker redirects those with --wrap). Is included by
// one file of a program, which defines what is declared here first.
#pragma once

#include <malloc.h>

#include <algorithm>
#include <cstddef>
#include <new>

namespace vantor::testing {

bool isGranted();
// In bytes, as the C library counts them.
void obtained(std::size_t bytes);
void returned(std::size_t bytes);

inline void* counted(void* block) {
    if (block != nullptr)
        obtained(::malloc_usable_size(block));
    return block;
}

} // namespace vantor::testing

extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* block, std::size_t size);
void __real_free(void* block);
void* __wrap_malloc(std::size_t size) {
    return vantor::testing::isGranted() ? vantor::testing::counted(__real_malloc(size)) : nullptr;
}
void* __wrap_calloc(std::size_t count, std::size_t size) {
    return vantor::testing::isGranted() ? vantor::testing::counted(__real_calloc(count, size)) : nullptr;
}
void* __wrap_realloc(void* block, std::size_t size) {
    if (!vantor::testing::isGranted())
        return nullptr;
    // Counted as if both blocks lived at once, which the library is free to make true.
    const auto old = ::malloc_usable_size(block);
    auto* const fresh = vantor::testing::counted(__real_realloc(block, size));
    if (fresh != nullptr || size == 0)
        vantor::testing::returned(old);
    return fresh;
}
void __wrap_free(void* block) {
    vantor::testing::returned(::malloc_usable_size(block));
    __real_free(block);
}
}

void* operator new(std::size_t size) {
    if (auto* const block = __wrap_malloc(std::max<std::size_t>(size, 1)))
        return block;
    throw std::bad_alloc();
}
void operator delete(void* block) noexcept {
    __wrap_free(block);
}
void operator delete(void* block, std::size_t) noexcept {
    __wrap_free(block);
}
