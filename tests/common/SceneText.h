// Scene files by what is in question: the rest is made up around it. Used by the tests of the scene file.
#pragma once

#include <string>

inline std::string document(const std::string& items) {
    return R"({"format": "tzscene", "version": 1, "items": [)" + items + "]}";
}
inline std::string mesh(const std::string& members) {
    return document(R"({"type": "mesh", "name": "m")" + (members.empty() ? "" : ", " + members) + "}");
}
// A mesh with two points and these polygons.
inline std::string polygons(const std::string& list) {
    return mesh(R"("points": [[0, 0, 0], [1, 1, 0]], "polygons": [)" + list + "]");
}
