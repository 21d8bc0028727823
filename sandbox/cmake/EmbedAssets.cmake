# Compiles every file below a folder into the target; their addresses are their paths from it.
# Drawings (*.svg) are served as pictures: each is rendered to a PNG of the size it names.
function(embed_assets target folder)
    set(code "#include \"portal/Assets.h\"\n\n")
    set(rows "")
    set(inputs "")
    set(index 0)
    set(top ${CMAKE_CURRENT_SOURCE_DIR}/${folder})
    file(GLOB_RECURSE files CONFIGURE_DEPENDS RELATIVE ${top} ${top}/*)
    foreach(file ${files})
        set(input ${top}/${file})
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
    string(APPEND code "\nconst std::map<std::string_view, std::string_view> &sandbox::embeddedAssets()\n{\n"
        "    static const std::map<std::string_view, std::string_view> assets{\n${rows}    };\n    return assets;\n}\n")
    set(generated ${CMAKE_CURRENT_BINARY_DIR}/Assets.cpp)
    file(CONFIGURE OUTPUT ${generated} CONTENT "${code}" @ONLY)
    set_source_files_properties(${generated} PROPERTIES OBJECT_DEPENDS "${inputs}"
        # A cached object would not notice that an included file has changed.
        RULE_LAUNCH_COMPILE "")
    target_sources(${target} PRIVATE ${generated})
endfunction()
