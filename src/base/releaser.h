// Releaser: lets a unique_ptr own what a library wants given back by a function of its own.
#pragma once

namespace vantor {

template <auto kRelease>
struct Releaser {
    template <typename T>
    void operator()(T* object) const {
        kRelease(object);
    }
};

} // namespace vantor
