/// \file
/// Files of the benchmarks' domes, each written once and removed in the end.
#pragma once

#include <cstddef>
#include <string>

#include "Inputs/BenchMeshes.h"

namespace quarn::bench {

enum class FileForm {
    SharedObj,    ///< A vertex for each position, with UV and normal.
    UnsharedObj,  ///< Three vertices for each triangle.
    /// As SharedObj, with a last triangle that refers to no normal: OBJScreen reads the whole text,
    /// makes all other triangles and refuses the mesh then, so that no index is made.
    RefusedObj,
    UnsharedRefusedObj,
    Stl
};

/// A file in the folder for temporary files. Its bytes have just been written, so that no disk is
/// waited for.
class MeshFile {
public:
    MeshFile(const MeshCase& mesh, FileForm form);
    MeshFile(const MeshFile&) = delete;
    MeshFile& operator=(const MeshFile&) = delete;
    ~MeshFile();

    [[nodiscard]] const std::string& path() const { return name; }
    [[nodiscard]] std::wstring widePath() const;
    [[nodiscard]] std::size_t size() const { return bytes; }

private:
    std::string name;
    std::size_t bytes = 0;
};

[[nodiscard]] const MeshFile& fileOf(const MeshCase& mesh, FileForm form);

}  // namespace quarn::bench
