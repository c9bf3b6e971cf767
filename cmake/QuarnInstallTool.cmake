# The tool, its man page and its shell completion. The tool generates the last two itself.
install(TARGETS quarnscreen)

set(quarn_completion "${quarn_generated_dir}/quarnscreen.bash")
add_custom_command(OUTPUT "${quarn_completion}"
                   COMMAND quarnscreen completion bash > "${quarn_completion}"
                   DEPENDS quarnscreen
                   COMMENT "Writing the tool's bash completion" VERBATIM)
install(FILES "${quarn_completion}" DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions"
        RENAME quarnscreen)
set(quarn_tool_documents "${quarn_completion}")

find_program(QUARN_HELP2MAN help2man)
if(QUARN_HELP2MAN)
    set(quarn_man_page "${quarn_generated_dir}/quarnscreen.1")
    add_custom_command(OUTPUT "${quarn_man_page}"
                       COMMAND "${QUARN_HELP2MAN}" --no-info "--name=${PROJECT_DESCRIPTION}"
                               "--output=${quarn_man_page}" $<TARGET_FILE:quarnscreen>
                       DEPENDS quarnscreen
                       COMMENT "Writing the tool's man page" VERBATIM)
    install(FILES "${quarn_man_page}" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
    list(APPEND quarn_tool_documents "${quarn_man_page}")
endif()

add_custom_target(quarnscreen_documents ALL DEPENDS ${quarn_tool_documents})
