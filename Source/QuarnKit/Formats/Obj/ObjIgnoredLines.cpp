#include "ObjIgnoredLines.h"

namespace quarn {

namespace {

// Returns the start of the argument after \p count others.
const char* argumentAfter(const char* line, int count) {
    const char* p = line;
    for (int i = 0; i < count; ++i) p = detail::nextArgument(p);
    return p;
}

void countOnVertex(const char* line, ObjIgnoredLines& ignored) {
    const char* p = argumentAfter(line, 3);
    int extras = 0;
    if (!isAtLineEnd(p))
        for (p = detail::nextArgument(p); !isAtLineEnd(p) && extras < 3; p = detail::nextArgument(p))
            ++extras;
    if (extras >= 3) ++ignored.colors;
    if (extras == 1 || extras == 2) ++ignored.weights;
}

void countOnUV(const char* line, ObjIgnoredLines& ignored) {
    const char* const v = argumentAfter(line, 2);
    if (!isAtLineEnd(v) && !isAtLineEnd(detail::nextArgument(v))) ++ignored.thirdUVs;
}

void countOther(const char* line, ObjIgnoredLines& ignored) {
    const std::string_view word = wordAt(line);
    if (word.empty() && *line != '\t') return;
    if (word.starts_with('#') || word.starts_with('$')) return;
    if (word == "usemtl")
        ++ignored.materials;
    else if (word == "mtllib")
        ++ignored.materialLibraries;
    else if (word == "g")
        ++ignored.groups;
    else if (word == "o")
        ++ignored.objects;
    else if (word == "s")
        ++ignored.smoothing;
    else
        ++ignored.otherLines;
}

}  // namespace

ObjIgnoredLines countIgnoredLines(const ObjSourceText& text) {
    ObjIgnoredLines ignored;
    forEachObjLine(text.text, [&](const char* line) {
        if (*line == 'f') return;
        if (*line == 'v' && line[1] == ' ') return countOnVertex(line, ignored);
        if (*line == 'v' && line[1] == 't') return countOnUV(line, ignored);
        if (*line == 'v' && line[1] == 'n') return;
        countOther(line, ignored);
    });
    return ignored;
}

}  // namespace quarn
