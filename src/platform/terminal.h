// Where the program's output goes.
#pragma once

namespace vantor {

[[nodiscard]] bool standardErrorIsTerminal();

} // namespace vantor
