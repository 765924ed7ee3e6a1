// hold-file PATH: holds a file that nobody else can open meanwhile, until its standard input ends.
// Writes one byte when it holds it; ends with status 1 if it can't.
#include <windows.h>

int main(int count, char** values) {
    const HANDLE held = count == 2 ? CreateFileA(values[1], GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                                 FILE_ATTRIBUTE_NORMAL, nullptr)
                                   : INVALID_HANDLE_VALUE;
    if (held == INVALID_HANDLE_VALUE) {
        return 1;
    }
    char byte = '.';
    DWORD done = 0;
    WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), &byte, 1, &done, nullptr);
    while (ReadFile(GetStdHandle(STD_INPUT_HANDLE), &byte, 1, &done, nullptr) && done > 0) {
    }
    return 0;
}
