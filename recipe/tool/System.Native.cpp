#include "recipe/tool/System.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <stdexcept>
#include <system_error>

namespace recipe {

namespace {

void CheckCall(int error, const char* what) {
    if (error != 0) {
        throw std::system_error(error, std::generic_category(), what);
    }
}

class Descriptor {
  public:
    Descriptor() = default;
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { Close(); }

    void Close() {
        if (number >= 0) {
            close(number);
            number = -1;
        }
    }

    int number = -1;
};

/// Closed on exec: a child that another thread starts at the same time must not hold an end open.
struct Pipe {
    Pipe() {
        std::array<int, 2> ends;
        CheckCall(pipe2(ends.data(), O_CLOEXEC) == 0 ? 0 : errno, "no pipe to a process");
        reading.number = ends[0];
        writing.number = ends[1];
    }

    Descriptor reading;
    Descriptor writing;
};

class SpawnActions {
  public:
    SpawnActions() { CheckCall(posix_spawn_file_actions_init(&actions), "no process"); }
    SpawnActions(const SpawnActions&) = delete;
    SpawnActions& operator=(const SpawnActions&) = delete;
    ~SpawnActions() { posix_spawn_file_actions_destroy(&actions); }

    void Connect(const Descriptor& from, int to) {
        CheckCall(posix_spawn_file_actions_adddup2(&actions, from.number, to), "no process");
    }
    const posix_spawn_file_actions_t* Get() const { return &actions; }

  private:
    posix_spawn_file_actions_t actions;
};

pid_t Spawn(const std::string& program, const std::vector<std::string>& arguments,
            const SpawnActions& actions) {
    std::vector<std::string> words = {program};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    pid_t child = 0;
    CheckCall(
        posix_spawn(&child, program.c_str(), actions.Get(), nullptr, pointers.data(), environ),
        "no process can be started");
    return child;
}

/// Stops without an error when the child has ended early; its status tells why.
void WriteAll(const Descriptor& to, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = write(to.number, text.data(), text.size());
        if (count < 0 && errno != EINTR) {
            return;
        }
        text.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
    }
}

std::string ReadAll(const Descriptor& from) {
    std::string text;
    std::array<char, 4096> block;
    for (;;) {
        const ssize_t count = read(from.number, block.data(), block.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return text;
        }
        text.append(block.data(), static_cast<std::size_t>(count));
    }
}

int WaitFor(pid_t child) {
    int status = 0;
    while (waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) {
            return -1;
        }
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace

FileHandle OpenFile(const std::filesystem::path& path, const char* mode) {
    return FileHandle(std::fopen(path.c_str(), mode));
}

std::string CoreFileName(const std::filesystem::path& path) {
    return path.string();
}

std::vector<std::string> CommandLineArguments(int argc, char** argv) {
    return argc > 0 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

void MakeStandardInputBinary() {}

bool StandardErrorIsTerminal() {
    return isatty(STDERR_FILENO) == 1;
}

unsigned long ProcessId() {
    return static_cast<unsigned long>(getpid());
}

std::filesystem::path ThisProgram() {
    return std::filesystem::read_symlink("/proc/self/exe");
}

ChildResult RunProgram(const std::filesystem::path& program,
                       const std::vector<std::string>& arguments, std::string_view input) {
    // Writing to a child that has ended fails, instead of ending this process.
    std::signal(SIGPIPE, SIG_IGN);
    Pipe toChild;
    Pipe fromChild;
    SpawnActions actions;
    actions.Connect(toChild.reading, STDIN_FILENO);
    actions.Connect(fromChild.writing, STDERR_FILENO);
    const pid_t child = Spawn(program.string(), arguments, actions);
    toChild.reading.Close();
    fromChild.writing.Close();
    WriteAll(toChild.writing, input);
    toChild.writing.Close();
    ChildResult result;
    result.errors = ReadAll(fromChild.reading);
    result.status = WaitFor(child);
    return result;
}

}  // namespace recipe
