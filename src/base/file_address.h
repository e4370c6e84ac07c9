// File addresses: the local files that "file:" addresses name, as desktops hand them over.
#pragma once

#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

namespace vantor {

// The file of an address such as "file:///home/anna/Zomer%202026.vantor": an absolute path of any bytes. A percent
// sign that begins no code stands for itself. Absent for other addresses and for files of another machine.
[[nodiscard]] std::optional<std::filesystem::path> fileOfAddress(std::string_view address);

// The local files of a list of addresses, one a line (text/uri-list); what is none is passed over.
[[nodiscard]] std::vector<std::filesystem::path> filesOfAddressList(std::string_view list);

} // namespace vantor
