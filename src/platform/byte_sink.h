// ByteSink: takes bytes in order, wherever they go.
#pragma once

#include <string_view>

namespace vantor {

class ByteSink {
public:
    virtual ~ByteSink() = default;

    // False when they could not be taken; from then on every call is false.
    virtual bool write(std::string_view bytes) = 0;
};

} // namespace vantor
