// RecordingUrlOpener: keeps every address that was to be opened.
#pragma once

#include "platform/url_opener.h"

#include <string>
#include <string_view>
#include <vector>

namespace vantor::testing {

class RecordingUrlOpener final : public UrlOpener {
public:
    std::vector<std::string> addresses;

    void open(std::string_view address) override { addresses.emplace_back(address); }
    void openPage(const std::filesystem::path& page) override {
        addresses.push_back("file://" + page.string());
    }
};

} // namespace vantor::testing
