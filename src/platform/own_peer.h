// Who stands behind a local socket: this process' own user, or somebody else, whom nothing is told and nothing is believed.
#pragma once

#include <cstdint>
#include <filesystem>

namespace vantor {

// Whether the socket's name was made by this user. Such a name is safe to connect to, as nobody else can hold it up.
[[nodiscard]] bool isOwnSocketName(const std::filesystem::path& path);

// Whether the other end of the connection belongs to this user, as the kernel knows it. No when it cannot tell.
[[nodiscard]] bool isOwnPeer(std::intptr_t socket);

} // namespace vantor
