# The tool, its man page and its shell completions. The tool generates the last two itself.
install(TARGETS quarnscreen)

# Where each shell looks for completions, and the name of the file there.
set(quarn_completion_dir_bash bash-completion/completions)
set(quarn_completion_name_bash quarnscreen)
set(quarn_completion_dir_zsh zsh/vendor-completions)
set(quarn_completion_name_zsh _quarnscreen)
set(quarn_completion_dir_fish fish/vendor_completions.d)
set(quarn_completion_name_fish quarnscreen.fish)

set(quarn_tool_documents "")
foreach(shell IN ITEMS bash zsh fish)
    set(completion "${quarn_generated_dir}/quarnscreen.${shell}")
    add_custom_command(OUTPUT "${completion}"
                       COMMAND quarnscreen completion ${shell} > "${completion}"
                       DEPENDS quarnscreen
                       COMMENT "Writing the tool's completion for ${shell}" VERBATIM)
    install(FILES "${completion}" DESTINATION "${CMAKE_INSTALL_DATADIR}/${quarn_completion_dir_${shell}}"
            RENAME "${quarn_completion_name_${shell}}")
    list(APPEND quarn_tool_documents "${completion}")
endforeach()

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
else()
    message(WARNING "The tool's man page will be missing: help2man was not found")
endif()

add_custom_target(quarnscreen_documents ALL DEPENDS ${quarn_tool_documents})
