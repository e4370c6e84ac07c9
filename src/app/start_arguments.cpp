#include "app/start_arguments.h"

#include "base/file_address.h"
#include "base/text_lookup.h"

namespace vantor {

StartArguments readStartArguments(const std::vector<std::string_view>& arguments,
                                  const std::filesystem::path& folder) {
    StartArguments read;
    bool onlyFiles = false;
    for (const auto argument : arguments) {
        const bool isOption = !onlyFiles && argument.size() > 1 && argument.front() == '-';
        if (!isOption) {
            read.files.push_back(fileOfAddress(argument).value_or(folder / argument));
        } else if (argument == "--") {
            onlyFiles = true;
        } else if (read.wish == StartArguments::Wish::Run) {
            read.option = argument;
            read.wish = argument == "--help"      ? StartArguments::Wish::Help
                        : argument == "--version" ? StartArguments::Wish::Version
                                                  : StartArguments::Wish::UnknownOption;
        }
    }
    return read;
}

std::string helpText() {
    return lookUp(
        "Gebruik: vantor-prep [OPTIE] [BESTAND...]\n"
        "\n"
        "Bereidt shoots, sets en QR-kaarten voor. Van elk BESTAND, een .vantor-bestand, wordt de shoot\n"
        "toegevoegd, ook wanneer Vantor Prep al open is. Een bestand kan ook een file://-adres zijn.\n"
        "\n"
        "  --help     toont deze uitleg\n"
        "  --version  toont de versie\n"
        "  --         alles hierachter is een bestand, ook wat met een streepje begint\n");
}

} // namespace vantor
