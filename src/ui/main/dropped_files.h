// Local files that are dragged over a window or dropped on it.
#pragma once

#include "base/file_address.h"
#include "ui/widgets/text.h"

#include <QDropEvent>
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

[[nodiscard]] inline std::vector<std::filesystem::path> droppedShootFiles(const QMimeData& data) {
    auto files = droppedFiles(data);
    std::erase_if(files, [](const std::filesystem::path& file) {
        return !qstring(file.filename().string()).endsWith(QLatin1String(".vantor"), Qt::CaseInsensitive);
    });
    return files;
}

// Takes what is dropped as a copy: behind a move, a file manager would delete the file. What can only be moved is refused.
inline void acceptAsCopy(QDropEvent& event) {
    if (!event.possibleActions().testFlag(Qt::CopyAction))
        return event.ignore();
    event.setDropAction(Qt::CopyAction);
    event.accept();
}

} // namespace vantor::ui
