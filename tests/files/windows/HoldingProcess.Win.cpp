#include "tests/files/windows/HoldingProcess.Win.h"

#include <filesystem>

namespace {

std::string HoldFileProgram() {
    char path[MAX_PATH] = "";
    GetModuleFileNameA(nullptr, path, sizeof path);
    return (std::filesystem::path(path).parent_path() / "hold-file.exe").string();
}

struct Pipe {
    HANDLE reader = nullptr;
    HANDLE writer = nullptr;
};

/// The child gets one end; the other is this process' alone.
Pipe MakePipe(bool childReads) {
    SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    Pipe pipe;
    CreatePipe(&pipe.reader, &pipe.writer, &inheritable, 0);
    SetHandleInformation(childReads ? pipe.writer : pipe.reader, HANDLE_FLAG_INHERIT, 0);
    return pipe;
}

}  // namespace

HoldingProcess::HoldingProcess(const std::string& path) {
    const Pipe toChild = MakePipe(true);
    const Pipe fromChild = MakePipe(false);
    STARTUPINFOA start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = toChild.reader;
    start.hStdOutput = fromChild.writer;
    start.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    PROCESS_INFORMATION child{};
    std::string command = "\"" + HoldFileProgram() + "\" \"" + path + "\"";
    if (CreateProcessA(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                       &child)) {
        CloseHandle(child.hThread);
        process = child.hProcess;
    }
    CloseHandle(toChild.reader);
    CloseHandle(fromChild.writer);
    input = toChild.writer;
    // Comes when the file is held; the pipe ends if it cannot be.
    char byte = 0;
    DWORD done = 0;
    holds = ReadFile(fromChild.reader, &byte, 1, &done, nullptr) && done == 1;
    CloseHandle(fromChild.reader);
}

HoldingProcess::~HoldingProcess() {
    CloseHandle(input);
    if (process != nullptr) {
        WaitForSingleObject(process, INFINITE);
        CloseHandle(process);
    }
}
