// Where the help pages are.
#pragma once

#include <string>

/// The beginning of an address; the path follows.
constexpr char helpScheme[] = "file://";

/// The address of the help pages: `pages`, a path such as "\Folder\Page.htm", beside the module
/// whose full path is `module`. Double-byte characters, whose first byte `isLeadByte` knows, are
/// kept whole: their second byte can look like a backslash.
std::string HelpAddress(const std::string& module, const std::string& pages,
                        bool (*isLeadByte)(unsigned char));
