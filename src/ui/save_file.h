// saveFile(): asks where to, and writes what there was to save when it asked. Without bytes it asks all the same, and
// writes nothing. Every failure is silent.
#pragma once

#include "ui/services.h"

#include <optional>
#include <string>

namespace vantor::ui {

void saveFile(const QWidget* asking, const Services& services, const std::string& proposedName,
              const FileType& type, std::optional<std::string> bytes);

} // namespace vantor::ui
