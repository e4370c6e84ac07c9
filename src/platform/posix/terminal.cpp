#include "platform/terminal.h"

#include <unistd.h>

namespace vantor {

bool standardErrorIsTerminal() {
    return ::isatty(STDERR_FILENO) == 1;
}

} // namespace vantor
