// Where an adapter finds the module when its user names none.
#pragma once

#include <string>

namespace tzadapter {

// The file that the environment variable TZSVG_MODULE names; else tzsvg.so beside the library that holds
// `symbol`, or in a folder "tzsvg" beside it. Where there is none it is the first of these places, for an
// error to name.
std::string findModule(const void* symbol);

// The folder of the library or program that holds `symbol`; empty when nobody knows.
std::string folderOf(const void* symbol);

}  // namespace tzadapter
