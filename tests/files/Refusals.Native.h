// Refusals of the system: a full disk, a folder that cannot be written, a file in use.
#pragma once

#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <string>

/// No file of this process grows beyond `bytes`.
class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t bytes) : handler(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit limit{bytes, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
    }

  private:
    void (*handler)(int);
    rlimit before{};
};

/// A folder in which nothing can be made or deleted. For root, the process takes another user's
/// rights meanwhile.
class ReadOnlyFolder {
  public:
    explicit ReadOnlyFolder(const std::filesystem::path& newPath) : path(newPath) {
        chmod(path.c_str(), 0555);
        if (isRoot) {
            changed = seteuid(nobody) == 0;
        }
    }
    ReadOnlyFolder(const ReadOnlyFolder&) = delete;
    ReadOnlyFolder& operator=(const ReadOnlyFolder&) = delete;
    ~ReadOnlyFolder() {
        if (isRoot) {
            changed = seteuid(0) == 0;
        }
        chmod(path.c_str(), 0755);
    }

  private:
    static constexpr uid_t nobody = 65534;
    std::filesystem::path path;
    bool isRoot = geteuid() == 0;
    bool changed = false;
};

/// Another process that holds the file while the object lives.
class HoldingProcess {
  public:
    explicit HoldingProcess(const std::string& path) {
        int ready[2];
        int done[2];
        if (pipe(ready) != 0 || pipe(done) != 0) {
            return;
        }
        child = fork();
        if (child == 0) {
            close(done[1]);
            const int held = open(path.c_str(), O_RDONLY);
            char byte = flock(held, LOCK_EX | LOCK_NB) == 0 ? 'y' : 'n';
            const bool told = write(ready[1], &byte, 1) == 1;
            const bool released = read(done[0], &byte, 1) == 0;
            _exit(told && released ? 0 : 1);
        }
        close(ready[1]);
        close(done[0]);
        char byte = 'n';
        holds = read(ready[0], &byte, 1) == 1 && byte == 'y';
        close(ready[0]);
        release = done[1];
    }
    HoldingProcess(const HoldingProcess&) = delete;
    HoldingProcess& operator=(const HoldingProcess&) = delete;
    ~HoldingProcess() {
        close(release);
        waitpid(child, nullptr, 0);
    }

    bool Holds() const { return holds; }

  private:
    pid_t child = -1;
    int release = -1;
    bool holds = false;
};
