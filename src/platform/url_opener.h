// UrlOpener: shows web addresses in the user's browser.
#pragma once

#include <string_view>

namespace vantor {

class UrlOpener {
public:
    virtual ~UrlOpener() = default;

    // Only http and https addresses are opened; anything else is ignored. Failures are silent.
    virtual void open(std::string_view address) = 0;
};

} // namespace vantor
