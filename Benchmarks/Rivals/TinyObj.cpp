#include "Rivals/TinyObj.h"

// Compiled here, so that it gets the flags of the library.
#define TINYOBJLOADER_IMPLEMENTATION
#include <tiny_obj_loader.h>

namespace quarn::bench {

std::size_t parseByTinyObj(const std::string& path) {
    tinyobj::attrib_t attributes;
    std::vector<tinyobj::shape_t> shapes;
    std::vector<tinyobj::material_t> materials;
    std::string warning;
    std::string error;
    if (!tinyobj::LoadObj(&attributes, &shapes, &materials, &warning, &error, path.c_str())) return 0;
    std::size_t triangles = 0;
    for (const tinyobj::shape_t& shape : shapes) triangles += shape.mesh.num_face_vertices.size();
    return triangles;
}

}  // namespace quarn::bench
