// Where the host finds what is installed with it: the module and the normalizer.
#pragma once

#include <string>

namespace tzhost {

// The file of that name ("tzsvg.so"), looked for beside the program or library that this code is part of, as
// in a build tree and in an add-on; in a folder "tzsvg" beside it; and in the lib/tzsvg of the tree in which
// it is installed. When it is nowhere, the first of these places, for an error to name.
std::string installedFile(const char* name);

// The module for a program whose user named none: what the environment variable TZSVG_MODULE names, else the
// installed one.
std::string defaultModule();

}  // namespace tzhost
