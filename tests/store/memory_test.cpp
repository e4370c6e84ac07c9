#include "formats/shoot_file.h"
#include "model/product_json.h"
#include "model/shoot_json.h"
#include "tests/support/examples.h"

#include <gtest/gtest.h>
#include <malloc.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <new>
#include <string>

// Everything this program allocates goes through here: operator new of the program and of the libraries, and the
// C functions as the project's own objects call them (the linker redirects those).
namespace {

std::ptrdiff_t held = 0;
std::ptrdiff_t most = 0;

void* noted(void* block) {
    if (block != nullptr) {
        held += static_cast<std::ptrdiff_t>(malloc_usable_size(block));
        most = std::max(most, held);
    }
    return block;
}

void* unnoted(void* block) {
    if (block != nullptr)
        held -= static_cast<std::ptrdiff_t>(malloc_usable_size(block));
    return block;
}

} // namespace

extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* block, std::size_t size);
void __real_free(void* block);
void* __wrap_malloc(std::size_t size) {
    return noted(__real_malloc(size));
}
void* __wrap_calloc(std::size_t count, std::size_t size) {
    return noted(__real_calloc(count, size));
}
void* __wrap_realloc(void* block, std::size_t size) {
    // Counted as if both blocks lived at once, which the library is free to make true.
    const auto old = block != nullptr ? static_cast<std::ptrdiff_t>(malloc_usable_size(block)) : 0;
    auto* const fresh = noted(__real_realloc(block, size));
    if (fresh != nullptr || size == 0)
        held -= old;
    return fresh;
}
void __wrap_free(void* block) {
    __real_free(unnoted(block));
}
}

void* operator new(std::size_t size) {
    if (auto* const block = noted(__real_malloc(std::max<std::size_t>(size, 1))))
        return block;
    throw std::bad_alloc();
}
void operator delete(void* block) noexcept {
    __real_free(unnoted(block));
}
void operator delete(void* block, std::size_t) noexcept {
    __real_free(unnoted(block));
}

namespace vantor {
namespace {

// The most that `read` holds at once, what it gives back included, over the size of its input. The input itself
// counts too: whoever reads a file has it in memory.
double ratio(const std::string& json, const std::function<std::size_t(const std::string&)>& read,
             std::size_t expected) {
    most = held;
    const auto before = held - static_cast<std::ptrdiff_t>(json.size());
    EXPECT_EQ(read(json), expected);
    const auto result = static_cast<double>(most - before) / static_cast<double>(json.size());
    std::cout << json.size() << " bytes, " << result << " times that\n";
    return result;
}

constexpr double kMost = 6;

std::size_t setsOfShoots(const std::string& json) {
    const auto shoots = readShoots(json, DateForm::SecondsSinceReference);
    return shoots && !shoots->empty() ? shoots->front().sets.size() : 0;
}

std::size_t shootsOf(const std::string& json) {
    const auto shoots = readShoots(json, DateForm::SecondsSinceReference);
    return shoots ? shoots->size() : 0;
}

std::string repeated(std::string_view open, std::string_view element, int count, std::string_view close) {
    std::string out(open);
    out.reserve(open.size() + (element.size() + 1) * static_cast<std::size_t>(count) + close.size());
    for (int i = 0; i < count; ++i) {
        if (i > 0)
            out += ',';
        out += element;
    }
    out += close;
    out.shrink_to_fit();
    return out;
}

constexpr auto kId = "00000000-0000-4000-8000-000000000001";
const std::string kIdMember = R"("id":")" + std::string(kId) + "\"";
const std::string kEmptyShoot =
    R"({"client":"","date":0,)" + kIdMember + R"(,"location":"","name":"","sets":[]})";
const std::string kEmptySet =
    R"({"brand":"",)" + kIdMember + R"(,"items":[],"location":"","model":"","setNumber":"","timestamp":0})";

// A shoot whose list of that name is [list].
std::string shootWith(std::string_view name, std::string_view list) {
    return R"({"client":"","date":0,)" + kIdMember + R"(,"location":"","name":"",")" + std::string(name) +
           "\":" + std::string(list) + (name == "sets" ? "}" : R"(,"sets":[]})");
}

TEST(LoadingMemory, OfTenThousandSetsIsAtMostSixTimesTheFile) {
    auto shoot = testing::ibiza();
    shoot.sets.clear();
    for (unsigned i = 0; i < 10'000; ++i) {
        auto set = testing::noorderlicht();
        set.id = testing::numberedId(i);
        set.setNumber = std::to_string(i);
        set.items.push_back(SetItem::make("leather boots", "dark chocolate brown"));
        set.email = "anna.de.vries@example.com";
        shoot.sets.push_back(set);
        shoot.activationLog.push_back({set.id, testing::kMorning});
    }
    JsonWriter out(JsonWriter::Layout::Compact);
    writeShoots(out, {shoot}, DateForm::SecondsSinceReference);
    EXPECT_LE(ratio(std::string(out.written()), setsOfShoots, 10'000), kMost);
    const auto file = writeShootFile(shoot);
    EXPECT_LE(ratio(
                  file, [](const std::string& bytes) { return readShootFile(bytes)->sets.size(); }, 10'000),
              kMost);
}

TEST(LoadingMemory, OfManyEmptyShootsIsAtMostSixTimesTheFile) {
    EXPECT_LE(ratio(repeated("[", kEmptyShoot, 40'000, "]"), shootsOf, 40'000), kMost);
    // Just above a power of two, where a list that doubles has the most room to spare.
    EXPECT_LE(ratio(repeated("[", kEmptyShoot, 32'769, "]"), shootsOf, 32'769), kMost);
}

TEST(LoadingMemory, OfManyEmptySetsIsAtMostSixTimesTheFile) {
    const auto json = "[" + shootWith("sets", repeated("[", kEmptySet, 32'769, "]")) + "]";
    EXPECT_LE(ratio(json, setsOfShoots, 32'769), kMost);
}

TEST(LoadingMemory, OfManyShootsWithOneEmptySetIsAtMostSixTimesTheFile) {
    const auto shoot = shootWith("sets", "[" + kEmptySet + "]");
    EXPECT_LE(ratio(repeated("[", shoot, 32'769, "]"), shootsOf, 32'769), kMost);
}

TEST(LoadingMemory, OfManyTinyItemsIsAtMostSixTimesTheFile) {
    const auto item = R"({"color":"",)" + kIdMember + R"(,"name":""})";
    const auto set = [&](const std::string& items) {
        return R"({"brand":"",)" + kIdMember + R"(,"items":)" + items +
               R"(,"location":"","model":"","setNumber":"","timestamp":0})";
    };
    const auto many = "[" + shootWith("sets", "[" + set(repeated("[", item, 65'537, "]")) + "]") + "]";
    EXPECT_LE(ratio(many, setsOfShoots, 1), kMost);
    const auto one = "[" + shootWith("sets", repeated("[", set("[" + item + "]"), 32'769, "]")) + "]";
    EXPECT_LE(ratio(one, setsOfShoots, 32'769), kMost);
}

TEST(LoadingMemory, OfManyActivationsIsAtMostSixTimesTheFile) {
    const auto activation = R"({"activatedAt":0,"setId":")" + std::string(kId) + "\"}";
    const auto many = "[" + shootWith("activationLog", repeated("[", activation, 65'537, "]")) + "]";
    EXPECT_LE(ratio(many, shootsOf, 1), kMost);
}

TEST(LoadingMemory, OfTextsJustTooLongToBeKeptInPlaceIsAtMostSixTimesTheFile) {
    const std::string text(16, 'x');
    const auto set = R"({"brand":")" + text + R"(",)" + kIdMember + R"(,"items":[],"location":")" + text +
                     R"(","model":")" + text + R"(","setNumber":")" + text + R"(","timestamp":0})";
    EXPECT_LE(ratio("[" + shootWith("sets", repeated("[", set, 32'769, "]")) + "]", setsOfShoots, 32'769),
              kMost);
}

TEST(LoadingMemory, OfOneLongTextIsAtMostSixTimesTheFile) {
    const auto json = "[" + std::string(kEmptyShoot).insert(11, std::string(4'194'305, 'x')) + "]";
    EXPECT_LE(ratio(json, shootsOf, 1), kMost);
}

TEST(LoadingMemory, OfAFileThatIsRefusedAtItsEndIsAtMostSixTimesTheFile) {
    EXPECT_LE(ratio(repeated("[", kEmptyShoot, 32'769, ",{}]"), shootsOf, 0), kMost);
    EXPECT_LE(ratio(std::string(4'000'000, '['), shootsOf, 0), kMost);
    EXPECT_LE(ratio(R"([{"ignored":)" + std::string(4'000'000, '['), shootsOf, 0), kMost);
}

TEST(LoadingMemory, OfManyProductsIsAtMostSixTimesTheFile) {
    const auto product = "{" + kIdMember + R"(,"name":"","colors":[],"brand":""})";
    const auto read = [](const std::string& json) {
        const auto catalog = readCatalog(json);
        return catalog ? catalog->products.size() : 0;
    };
    EXPECT_LE(
        ratio(repeated(R"({"products":[)", product, 65'537, R"(],"clients":[],"brands":[]})"), read, 65'537),
        kMost);
}

} // namespace
} // namespace vantor
