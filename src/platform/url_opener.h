// UrlOpener: shows pages in the user's browser.
#pragma once

#include <filesystem>
#include <string_view>

namespace vantor {

class UrlOpener {
public:
    virtual ~UrlOpener() = default;

    // Only http and https addresses are opened; anything else is ignored. Failures are silent.
    virtual void open(std::string_view address) = 0;
    // Shows a page that stands on this computer. Apart from open(), so that no address from outside gets here.
    virtual void openPage(const std::filesystem::path& page) = 0;
};

} // namespace vantor
