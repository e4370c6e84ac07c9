#include "tests/cli/program.h"

#include "formats/shoot_file.h"
#include "tests/support/read_file.h"

#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace vantor::testing {
namespace {

namespace fs = std::filesystem;

std::string bytesOf(const fs::path& path) {
    const std::ifstream in(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

void writeBytes(const fs::path& path, std::string_view bytes) {
    std::ofstream out(path, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    ASSERT_TRUE(out.flush().good()) << "cannot write " << path;
}

// As one word for a shell.
std::string quoted(std::string word) {
    for (auto at = word.find('\''); at != std::string::npos; at = word.find('\'', at + 4))
        word.replace(at, 1, "'\\''");
    return "'" + word + "'";
}

} // namespace

void Program::TearDown() {
    for (const auto* const folder : {"data", "config", ".local", ".config"})
        EXPECT_FALSE(fs::exists(m_home / folder)) << "the program wrote to the user's own folder " << folder;
}

Outcome Program::run(const std::vector<std::string>& arguments, const Streams& streams) const {
    const auto input = streams.inputFile.empty() ? m_streams / "input" : streams.inputFile;
    const auto output = streams.outputFile.empty() ? m_streams / "output" : streams.outputFile;
    const auto errors = m_streams / "errors";
    if (streams.inputFile.empty())
        writeBytes(input, streams.input);

    std::string line = "cd " + quoted(m_folder.path()) + " && HOME=" + quoted(m_home.path()) +
                       " XDG_DATA_HOME=" + quoted(m_home / "data") +
                       " XDG_CONFIG_HOME=" + quoted(m_home / "config") +
                       " exec timeout --signal=KILL 120 " VANTOR_CLI;
    for (const auto& argument : arguments)
        line += " " + quoted(argument);
    line +=
        " <" + quoted(input) + " >" + (streams.outputClosed ? "&-" : quoted(output)) + " 2>" + quoted(errors);

    Outcome run;
    const int status = std::system(line.c_str());
    if (WIFEXITED(status))
        run.status = WEXITSTATUS(status);
    if (!streams.outputClosed && streams.outputFile.empty())
        run.output = bytesOf(output);
    run.errors = bytesOf(errors);
    return run;
}

std::string Program::done(const std::vector<std::string>& arguments, const Streams& streams) const {
    auto run = this->run(arguments, streams);
    EXPECT_EQ(run.status, kDone) << ::testing::PrintToString(arguments);
    EXPECT_EQ(run.errors, "") << ::testing::PrintToString(arguments);
    return run.output;
}

void Program::expectFailure(const std::vector<std::string>& arguments, const std::string& complaint,
                            const Streams& streams) const {
    const auto run = this->run(arguments, streams);
    EXPECT_EQ(run.status, kFailed) << ::testing::PrintToString(arguments);
    EXPECT_EQ(run.output, "") << ::testing::PrintToString(arguments);
    EXPECT_EQ(run.errors, "vantor-prep-cli: " + complaint + "\n");
}

void Program::write(const fs::path& name, std::string_view bytes) const {
    writeBytes(at(name), bytes);
}

std::string Program::read(const fs::path& name) const {
    EXPECT_TRUE(fs::is_regular_file(at(name))) << name << " is not there";
    return bytesOf(at(name));
}

void Program::writeShoot(const fs::path& name, SetList sets) const {
    auto shoot = Shoot::make("Proef", "", "", Timestamp{0});
    shoot.sets = std::move(sets);
    write(name, writeShootFile(shoot));
}

SetData setOf(std::string number, std::string brand, std::vector<SetItem> items) {
    auto set = SetData::make(Timestamp{0});
    set.setNumber = std::move(number);
    set.brand = std::move(brand);
    set.items = std::move(items);
    return set;
}

std::string example(const std::string& name) {
    return readFile(fs::path(VANTOR_EXAMPLES) / name);
}

} // namespace vantor::testing
