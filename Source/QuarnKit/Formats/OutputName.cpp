#include "OutputName.h"

#include <algorithm>
#include <array>
#include <string_view>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/PrintableText.h>

namespace quarn {

namespace {

// Extensions that identify a format to most programs.
constexpr std::array<std::string_view, 45> kKnownExtensions = {
    "3dm",  "3ds", "3mf",  "amf", "blend", "bmp",  "bz2", "csv",  "dae",  "dwg",  "dxf",  "eps",
    "exr",  "fbx", "gif",  "glb", "gltf",  "gz",   "htm", "html", "iges", "igs",  "jpeg", "jpg",
    "json", "mtl", "npy",  "obj", "off",   "pdf",  "ply", "png",  "skp",  "step", "stl",  "stp",
    "svg",  "tif", "tiff", "tsv", "usd",   "webp", "x3d", "xml",  "zip"};

}  // namespace

std::string extensionOf(const std::string& path) {
    const std::size_t nameBegin = path.find_last_of('/') + 1;
    const std::size_t dot = path.find_last_of('.');
    if (dot == std::string::npos || dot < nameBegin) return {};
    std::string extension = path.substr(dot + 1);
    std::transform(extension.begin(), extension.end(), extension.begin(), [](char byte) {
        return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
    });
    return extension;
}

void requireOutputName(const std::string& path, const std::vector<std::string>& extensions,
                       const std::string& alternative) {
    const std::string extension = extensionOf(path);
    const auto contains = [&](const auto& list) {
        return std::find(list.begin(), list.end(), extension) != list.end();
    };
    if (contains(extensions) || !contains(kKnownExtensions)) return;
    std::string endings;
    for (const std::string& each : extensions) endings += (endings.empty() ? "." : " or .") + each;
    throw Error({.found = "found the output " + quotedExcerpt(path),
                 .expected = "a name that ends with " + endings + alternative});
}

}  // namespace quarn
