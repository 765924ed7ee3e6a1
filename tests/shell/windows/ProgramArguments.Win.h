// What the tests that need Windows are told on their command line.
#pragma once

#include <windows.h>

#include <string>

struct ProgramArguments {
    /// The product, as it is shipped.
    std::string plugin;
    /// The stand-in for the product family's shared library.
    std::string toolbox;
    /// That library as the host brings it along; its file has another name than the library.
    std::string family;
    /// Where to leave pictures of the dialogs, for people to look at; empty for nowhere.
    std::string screenshots;
    /// The desktop of this process. Helper threads set it as theirs.
    HDESK desktop = nullptr;
};

const ProgramArguments& Arguments();
