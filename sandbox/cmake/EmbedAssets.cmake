# Compiles every file below the given folders into the target; their addresses are their paths from here.
# Drawings (*.svg) are served as pictures: each is rendered to a PNG of the size it names.
function(embed_assets target)
    set(code "#include \"Assets.h\"\n\n")
    set(rows "")
    set(inputs "")
    set(index 0)
    foreach(folder ${ARGN})
        file(GLOB_RECURSE files CONFIGURE_DEPENDS RELATIVE ${CMAKE_CURRENT_SOURCE_DIR}
            ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*)
        foreach(file ${files})
            set(input ${CMAKE_CURRENT_SOURCE_DIR}/${file})
            if(file MATCHES "\\.svg$")
                string(REGEX REPLACE "\\.svg$" ".png" file ${file})
                set(drawing ${input})
                set(input ${CMAKE_CURRENT_BINARY_DIR}/${file})
                get_filename_component(parent ${input} DIRECTORY)
                file(MAKE_DIRECTORY ${parent})
                add_custom_command(OUTPUT ${input} DEPENDS ${drawing}
                    COMMAND ${RSVG_CONVERT} --output ${input} ${drawing}
                    VERBATIM)
            endif()
            string(APPEND code "asm(\".section .rodata\\nasset_${index}:\\n.incbin \\\"${input}\\\"\\n"
                "asset_${index}_end:\\n.byte 0\\n.global asset_${index}, asset_${index}_end\\n.previous\");\n"
                "extern \"C\" const char asset_${index}[], asset_${index}_end[];\n")
            string(APPEND rows "        {\"/${file}\", {asset_${index}, size_t(asset_${index}_end - asset_${index})}},\n")
            list(APPEND inputs ${input})
            math(EXPR index "${index} + 1")
        endforeach()
    endforeach()
    string(APPEND code "\nconst std::map<std::string_view, std::string_view> &sandbox::embeddedAssets()\n{\n"
        "    static const std::map<std::string_view, std::string_view> assets{\n${rows}    };\n    return assets;\n}\n")
    set(generated ${CMAKE_CURRENT_BINARY_DIR}/Assets.cpp)
    file(CONFIGURE OUTPUT ${generated} CONTENT "${code}" @ONLY)
    set_source_files_properties(${generated} PROPERTIES OBJECT_DEPENDS "${inputs}"
        # A cached object would not notice that an included file has changed.
        RULE_LAUNCH_COMPILE "")
    target_sources(${target} PRIVATE ${generated})
endfunction()
