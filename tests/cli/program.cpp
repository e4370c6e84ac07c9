#include "tests/cli/program.h"

#include "formats/shoot_file.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <sstream>
#include <thread>

namespace vantor::testing {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr auto kPatience = 2min;

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

// This process's environment with the user's folders elsewhere.
std::vector<std::string> environmentIn(const fs::path& home) {
    std::vector<std::string> all;
    for (char** each = environ; *each != nullptr; ++each) {
        const std::string_view entry(*each);
        if (!entry.starts_with("HOME=") && !entry.starts_with("XDG_"))
            all.emplace_back(entry);
    }
    all.push_back("HOME=" + home.string());
    all.push_back("XDG_DATA_HOME=" + (home / "data").string());
    all.push_back("XDG_CONFIG_HOME=" + (home / "config").string());
    return all;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (auto& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

class FileActions {
public:
    FileActions() { ::posix_spawn_file_actions_init(&m_actions); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;
    ~FileActions() { ::posix_spawn_file_actions_destroy(&m_actions); }

    void open(int descriptor, const fs::path& path, int flags) {
        ::posix_spawn_file_actions_addopen(&m_actions, descriptor, path.c_str(), flags, 0600);
    }
    void close(int descriptor) { ::posix_spawn_file_actions_addclose(&m_actions, descriptor); }
    void enter(const fs::path& folder) { ::posix_spawn_file_actions_addchdir_np(&m_actions, folder.c_str()); }

    [[nodiscard]] const posix_spawn_file_actions_t* get() const { return &m_actions; }

private:
    posix_spawn_file_actions_t m_actions{};
};

std::optional<int> statusOf(pid_t process) {
    const auto end = std::chrono::steady_clock::now() + kPatience;
    int status = 0;
    pid_t ended = 0;
    while ((ended = ::waitpid(process, &status, WNOHANG)) == 0) {
        if (std::chrono::steady_clock::now() > end) {
            ::kill(process, SIGKILL);
            ::waitpid(process, &status, 0);
            return std::nullopt;
        }
        std::this_thread::sleep_for(500us);
    }
    return ended == process && WIFEXITED(status) ? std::optional(WEXITSTATUS(status)) : std::nullopt;
}

} // namespace

void PrintTo(const Outcome& run, std::ostream* out) {
    *out << "status " << (run.status ? std::to_string(*run.status) : "absent") << "\noutput: " << run.output
         << "\nerrors: " << run.errors;
}

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

    FileActions actions;
    actions.open(STDIN_FILENO, input, O_RDONLY);
    if (streams.outputClosed)
        actions.close(STDOUT_FILENO);
    else
        actions.open(STDOUT_FILENO, output, O_WRONLY | O_CREAT | O_TRUNC);
    actions.open(STDERR_FILENO, errors, O_WRONLY | O_CREAT | O_TRUNC);
    actions.enter(m_folder.path());

    std::vector<std::string> words{VANTOR_CLI};
    words.insert(words.end(), arguments.begin(), arguments.end());
    auto environment = environmentIn(m_home.path());

    Outcome run;
    pid_t process = 0;
    const int error = ::posix_spawn(&process, VANTOR_CLI, actions.get(), nullptr, pointersTo(words).data(),
                                    pointersTo(environment).data());
    EXPECT_EQ(error, 0) << "cannot start " VANTOR_CLI;
    if (error != 0)
        return run;
    run.status = statusOf(process);
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
    auto bytes = bytesOf(fs::path(VANTOR_EXAMPLES) / name);
    EXPECT_FALSE(bytes.empty()) << "cannot read the example " << name;
    return bytes;
}

} // namespace vantor::testing
