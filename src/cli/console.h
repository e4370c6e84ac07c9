// Console: the program's standard output and standard error.
//
// Output is text in UTF-8. What a file holds may be shown, but nothing in it drives a terminal: control characters
// other than tab and line feed are replaced by U+FFFD in lines for a person, and escaped in JSON, which stays exact.
#pragma once

#include <string_view>

namespace vantor::cli {

class Console {
public:
    // `showsProgress` where standard error is a terminal that somebody looks at.
    explicit Console(bool showsProgress) : m_showsProgress(showsProgress) {}

    // Collected until flush().
    void print(std::string_view text);
    void printJson(std::string_view json);
    // False when standard output did not take everything that was printed.
    [[nodiscard]] bool flush();

    // A line on standard error, after the program's name.
    void complain(std::string_view line);

    // Shows in a few words how far a long piece of work is; erased by whatever is shown next.
    void showProgress(std::string_view words);
    void endProgress();

private:
    void collect(std::string_view text);

    bool m_showsProgress;
    bool m_progressShown = false;
    bool m_failed = false;
};

} // namespace vantor::cli
