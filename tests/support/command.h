// runCommand(): runs a program that judges our output, and hands over what it printed.
#pragma once

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <string>

namespace vantor::testing {

struct CommandResult {
    // As a shell tells it; -1 when the command could not be run or was killed.
    int status = -1;
    // What it printed, its errors included.
    std::string output;
};

// `line` is for the shell.
inline CommandResult runCommand(const std::string& line) {
    CommandResult result;
    std::FILE* const pipe = ::popen((line + " 2>&1").c_str(), "r");
    if (pipe == nullptr)
        return result;
    std::array<char, 4096> buffer{};
    while (const auto count = std::fread(buffer.data(), 1, buffer.size(), pipe))
        result.output.append(buffer.data(), count);
    const int status = ::pclose(pipe);
    if (WIFEXITED(status))
        result.status = WEXITSTATUS(status);
    return result;
}

} // namespace vantor::testing
