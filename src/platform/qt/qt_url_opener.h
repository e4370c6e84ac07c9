// QtUrlOpener: opens pages with the program that the desktop has for them.
#pragma once

#include "platform/url_opener.h"

namespace vantor {

class QtUrlOpener final : public UrlOpener {
public:
    void open(std::string_view address) override;
    void openPage(const std::filesystem::path& page) override;
};

} // namespace vantor
