#include "platform/own_peer.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vantor {

bool isOwnSocketName(const std::filesystem::path& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 && S_ISSOCK(status.st_mode) && status.st_uid == ::geteuid();
}

bool isOwnPeer(std::intptr_t socket) {
    ucred peer{};
    socklen_t size = sizeof peer;
    return ::getsockopt(static_cast<int>(socket), SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 &&
           size == sizeof peer && peer.uid == ::geteuid();
}

} // namespace vantor
