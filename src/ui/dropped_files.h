// droppedFiles(): the local files that are dragged over a window or dropped on it.
#pragma once

#include "base/file_address.h"

#include <QMimeData>
#include <filesystem>
#include <string_view>
#include <vector>

namespace vantor::ui {

// In their order; other things that are dragged are passed over.
[[nodiscard]] inline std::vector<std::filesystem::path> droppedFiles(const QMimeData& data) {
    // As they were sent: the toolkit's addresses lose names that are not valid UTF-8.
    const auto list = data.data(QStringLiteral("text/uri-list"));
    return filesOfAddressList(std::string_view(list.constData(), static_cast<std::size_t>(list.size())));
}

} // namespace vantor::ui
