# A room of the house: one folder of src/ with its sub-rooms, one static library, linked to the rooms
# it may use.
#
#   vant_room(net ROOMS platform model LINK Qt6::Network)
#   vant_room(ui QML_URI Vant.Ui ROOMS platform LINK Qt6::Quick)
#
# With QML_URI the room is a QML module too; executables take it in with vant_import_rooms. A QML
# file's address is its module and its name, whichever sub-room it lies in.
function(vant_room name)
    cmake_parse_arguments(ROOM "" "QML_URI" "ROOMS;LINK" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h */*.cpp */*.h)
    list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
    set(target vant_${name})
    qt_add_library(${target} STATIC ${sources})
    vant_moc(${target})
    vant_precompiled_headers(${target})
    target_include_directories(${target} PUBLIC ${CMAKE_SOURCE_DIR}/src)
    target_compile_definitions(${target} PUBLIC QT_NO_CAST_TO_ASCII QT_NO_FOREACH)
    list(TRANSFORM ROOM_ROOMS PREPEND vant_)
    target_link_libraries(${target} PUBLIC Qt6::Core ${ROOM_LINK} ${ROOM_ROOMS})
    vant_warnings(${target})
    if(ROOM_QML_URI)
        # Compiled ahead where start-up counts; elsewhere the build counts.
        set(cachegen)
        if(CMAKE_BUILD_TYPE STREQUAL "Debug")
            set(cachegen NO_CACHEGEN)
        endif()
        string(REPLACE "." "/" module_path ${ROOM_QML_URI})
        file(GLOB qml CONFIGURE_DEPENDS RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} *.qml */*.qml)
        foreach(file ${qml})
            get_filename_component(name ${file} NAME)
            set_source_files_properties(${file} PROPERTIES QT_RESOURCE_ALIAS ${name})
        endforeach()
        qt_add_qml_module(${target}
            URI ${ROOM_QML_URI}
            VERSION 1.0
            RESOURCE_PREFIX /qt/qml
            OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/${module_path}
            QML_FILES ${qml}
            NO_PLUGIN_OPTIONAL
            ${cachegen})
        # The generated registration includes headers by their bare name.
        file(GLOB subrooms LIST_DIRECTORIES true ${CMAKE_CURRENT_SOURCE_DIR}/*/)
        list(FILTER subrooms EXCLUDE REGEX "\\.[a-z]+$")
        target_include_directories(${target} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR} ${subrooms})
    endif()
endfunction()

# Takes the QML modules of the rooms into an executable.
function(vant_import_rooms target)
    foreach(room ui login upload services launch web app)
        target_link_libraries(${target} PRIVATE vant_${room}plugin)
        list(APPEND plugins vant_${room}plugin)
    endforeach()
endfunction()
