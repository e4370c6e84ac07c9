#include "platform/terminal.h"

#include <windows.h>

namespace vantor {

bool standardErrorIsTerminal() {
    DWORD mode = 0;
    return ::GetConsoleMode(::GetStdHandle(STD_ERROR_HANDLE), &mode) != 0;
}

} // namespace vantor
