#include <fcntl.h>
#include <io.h>
#include <windows.h>
// After windows.h, which it needs.
#include <shellapi.h>

#include <array>
#include <mutex>
#include <stdexcept>
#include <system_error>

#include "recipe/tool/System.h"

namespace recipe {

namespace {

[[noreturn]] void ThrowLastError(const char* what) {
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), what);
}

std::string Utf8FromWide(const wchar_t* wide) {
    const int size = WideCharToMultiByte(CP_UTF8, 0, wide, -1, nullptr, 0, nullptr, nullptr);
    if (size <= 0) {
        return {};
    }
    // The size includes the terminating zero, which the string adds itself.
    std::string text(static_cast<std::size_t>(size) - 1, '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide, -1, text.data(), size, nullptr, nullptr);
    return text;
}

std::wstring WideFromUtf8(const std::string& text) {
    const int size = MultiByteToWideChar(CP_UTF8, 0, text.c_str(), -1, nullptr, 0);
    if (size <= 0) {
        return {};
    }
    std::wstring wide(static_cast<std::size_t>(size) - 1, L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.c_str(), -1, wide.data(), size);
    return wide;
}

/// The text in the system's code page; empty if a character is missing from it.
std::string CodePageText(const std::wstring& wide) {
    // UTF-8 as the code page has all characters, and does not allow the two last parameters.
    const bool isUtf8 = GetACP() == CP_UTF8;
    BOOL substituted = FALSE;
    BOOL* const noteSubstitutes = isUtf8 ? nullptr : &substituted;
    const DWORD flags = isUtf8 ? 0 : WC_NO_BEST_FIT_CHARS;
    std::string text(wide.size() * 4 + 1, '\0');
    const int size = WideCharToMultiByte(CP_ACP, flags, wide.c_str(), -1, text.data(),
                                         static_cast<int>(text.size()), nullptr, noteSubstitutes);
    text.resize(size > 0 && !substituted ? static_cast<std::size_t>(size) - 1 : 0);
    return text;
}

/// The short name of an existing file, which disks keep for old programs; empty without one.
std::wstring ShortName(const std::wstring& name) {
    std::wstring shortName(GetShortPathNameW(name.c_str(), nullptr, 0), L'\0');
    shortName.resize(
        GetShortPathNameW(name.c_str(), shortName.data(), static_cast<DWORD>(shortName.size())));
    return shortName;
}

class HandleOwner {
  public:
    explicit HandleOwner(HANDLE newHandle = nullptr) : handle(newHandle) {}
    HandleOwner(const HandleOwner&) = delete;
    HandleOwner& operator=(const HandleOwner&) = delete;
    ~HandleOwner() { Close(); }

    void Close() {
        if (handle != nullptr) {
            CloseHandle(handle);
            handle = nullptr;
        }
    }

    HANDLE handle;
};

struct Pipe {
    Pipe() {
        SECURITY_ATTRIBUTES inheritable = {sizeof inheritable, nullptr, TRUE};
        if (!CreatePipe(&reading.handle, &writing.handle, &inheritable, 0)) {
            ThrowLastError("no pipe to a process");
        }
    }

    /// Keeps the child from inheriting this end.
    static void Keep(const HandleOwner& end) {
        SetHandleInformation(end.handle, HANDLE_FLAG_INHERIT, 0);
    }

    HandleOwner reading;
    HandleOwner writing;
};

/// Quotes for CommandLineToArgvW, to which backslashes are special only before a quote.
std::wstring QuotedArgument(const std::wstring& argument) {
    std::wstring quoted = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t c : argument) {
        if (c == L'"') {
            quoted.append(backslashes + 1, L'\\');
        }
        backslashes = c == L'\\' ? backslashes + 1 : 0;
        quoted += c;
    }
    quoted.append(backslashes, L'\\');
    return quoted + L"\"";
}

HANDLE Spawn(const std::wstring& program, const std::vector<std::string>& arguments, HANDLE input,
             HANDLE errors) {
    std::wstring commandLine = QuotedArgument(program);
    for (const std::string& argument : arguments) {
        commandLine += L' ' + QuotedArgument(WideFromUtf8(argument));
    }
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = input;
    startup.hStdOutput = GetStdHandle(STD_OUTPUT_HANDLE);
    startup.hStdError = errors;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr,
                        nullptr, &startup, &process)) {
        ThrowLastError("no process can be started");
    }
    CloseHandle(process.hThread);
    return process.hProcess;
}

/// Stops without an error when the child has ended early; its status tells why.
void WriteAll(const HandleOwner& to, std::string_view text) {
    while (!text.empty()) {
        DWORD count = 0;
        if (!WriteFile(to.handle, text.data(), static_cast<DWORD>(text.size()), &count, nullptr)) {
            return;
        }
        text.remove_prefix(count);
    }
}

std::string ReadAll(const HandleOwner& from) {
    std::string text;
    std::array<char, 4096> block;
    DWORD count = 0;
    while (ReadFile(from.handle, block.data(), static_cast<DWORD>(block.size()), &count, nullptr) &&
           count > 0) {
        text.append(block.data(), count);
    }
    return text;
}

int WaitFor(const HandleOwner& process) {
    DWORD status = 0;
    if (WaitForSingleObject(process.handle, INFINITE) != WAIT_OBJECT_0 ||
        !GetExitCodeProcess(process.handle, &status)) {
        return -1;
    }
    // A process that faulted has the exception's code, far above any exit status.
    return status <= 255 ? static_cast<int>(status) : -1;
}

/// Held while a child gets its ends of the pipes: another one that starts meanwhile would inherit
/// them and hold them open.
std::mutex spawning;

}  // namespace

FileHandle OpenFile(const std::filesystem::path& path, const char* mode) {
    return FileHandle(_wfopen(path.c_str(), WideFromUtf8(mode).c_str()));
}

std::string CoreFileName(const std::filesystem::path& path) {
    std::string name = CodePageText(path.wstring());
    if (name.empty()) {
        name = CodePageText(ShortName(path.wstring()));
    }
    if (name.empty()) {
        throw std::runtime_error(Utf8FromWide(path.c_str()) +
                                 " has a name that the system's code page cannot say");
    }
    return name;
}

std::vector<std::string> CommandLineArguments(int /*argc*/, char** /*argv*/) {
    int count = 0;
    // argv has the arguments in the system's code page, which lacks some characters.
    wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; wide != nullptr && i < count; ++i) {
        arguments.push_back(Utf8FromWide(wide[i]));
    }
    LocalFree(wide);
    return arguments;
}

void MakeStandardInputBinary() {
    _setmode(_fileno(stdin), _O_BINARY);
}

bool StandardErrorIsTerminal() {
    DWORD mode = 0;  // only a console has one; _isatty also says yes to NUL
    return GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode) != 0;
}

unsigned long ProcessId() {
    return GetCurrentProcessId();
}

std::filesystem::path ThisProgram() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length == 0) {
            ThrowLastError("the program does not find itself");
        }
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

ChildResult RunProgram(const std::filesystem::path& program,
                       const std::vector<std::string>& arguments, std::string_view input) {
    std::unique_lock lock(spawning);
    Pipe toChild;
    Pipe fromChild;
    Pipe::Keep(toChild.writing);
    Pipe::Keep(fromChild.reading);
    const HandleOwner child(
        Spawn(program.wstring(), arguments, toChild.reading.handle, fromChild.writing.handle));
    toChild.reading.Close();
    fromChild.writing.Close();
    lock.unlock();
    WriteAll(toChild.writing, input);
    toChild.writing.Close();
    ChildResult result;
    result.errors = ReadAll(fromChild.reading);
    result.status = WaitFor(child);
    return result;
}

}  // namespace recipe
