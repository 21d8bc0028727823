# What makes the builds of users and developers quick; the sanitizers compile each source alone.
# Joining (CMAKE_UNITY_BUILD, in the presets) saves most. The rest:

# For what is compiled by hand of ours, and not for the toolkit's small helper targets.
function(vant_moc)
    set_target_properties(${ARGN} PROPERTIES AUTOMOC ON)
endfunction()

# The toolkit's headers that nearly every source reads, read once: by the lowest room, for all.
function(vant_precompiled_headers target)
    if(NOT CMAKE_UNITY_BUILD)
        return()
    endif()
    # As the libraries of the lowest room ask for: what reads the headers is compiled with the same options.
    target_compile_options(${target} PRIVATE -pthread)
    if(TARGET vant_platform AND NOT target STREQUAL "vant_platform")
        target_precompile_headers(${target} REUSE_FROM vant_platform)
    else()
        target_precompile_headers(${target} PRIVATE
            <QDir> <QFileInfo> <QHash> <QJsonArray> <QJsonDocument> <QJsonObject> <QLoggingCategory>
            <QMap> <QPointer> <QRegularExpression> <QSet> <QString> <QStringList> <QThreadPool> <QUrl>
            <QVariant> <QVariantMap> <QImage>
            <algorithm> <chrono> <functional> <memory> <mutex> <optional> <utility> <variant> <vector>)
    endif()
endfunction()

# Forty programs are linked for the tests.
include(CheckLinkerFlag)
check_linker_flag(CXX -fuse-ld=gold VANT_HAS_GOLD)
if(VANT_HAS_GOLD AND CMAKE_BUILD_TYPE STREQUAL "Debug" AND NOT VANT_SANITIZE)
    add_link_options(-fuse-ld=gold)
endif()
