// saveFile(): asks where to, writes what there was to save when it asked, and tells what became of it.
//
// Without bytes it asks all the same, and writes nothing. No dialog tells of a failure: the notice strip does.
#pragma once

#include "ui/frame/services.h"

#include <optional>
#include <string>

namespace vantor::ui {

void saveFile(const QWidget* asking, const Services& services, const std::string& proposedName,
              const FileType& type, std::optional<std::string> bytes);

} // namespace vantor::ui
