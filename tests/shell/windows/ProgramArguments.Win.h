// The command line of the tests that need Windows.
#pragma once

#include <string>

struct ProgramArguments {
    /// The product, as it is shipped.
    std::string plugin;
    /// The stand-in for the product family's shared library.
    std::string toolbox;
    /// That library as the host brings it along; its file has another name than the library.
    std::string family;
    /// The compiler's shared run-time libraries, in 32 bits.
    std::string threads;
    std::string unwinder;
};

const ProgramArguments& Arguments();
