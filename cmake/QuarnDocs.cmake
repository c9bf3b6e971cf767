# The reference of the public headers: `cmake --build BUILD --target docs`.
find_package(Doxygen QUIET COMPONENTS dot)
if(NOT DOXYGEN_FOUND)
    return()
endif()
set(quarn_docs_dir "${PROJECT_BINARY_DIR}/docs")
configure_file("${PROJECT_SOURCE_DIR}/Docs/Doxyfile.in" "${quarn_docs_dir}/Doxyfile" @ONLY)
add_custom_target(docs COMMAND Doxygen::doxygen "${quarn_docs_dir}/Doxyfile"
                  COMMENT "Writing the reference into ${quarn_docs_dir}/html" VERBATIM)
