# The library's sources, and how it is compiled.
set(LUM_SOURCES
    Mac/FileSystemPaths.cpp
    Mac/TextConverter.cpp
    Mac/TextEncodings.cpp
    Platform/CoreFoundation/CFBase.cpp
    Platform/CoreFoundation/CFBundle.cpp
    Platform/CoreFoundation/CFString.cpp
    Platform/CoreFoundation/CFStringBytes.cpp
    Platform/CoreFoundation/CFURL.cpp
    Platform/CoreFoundation/StringTable.cpp
    Platform/CoreFoundation/TextTable.cpp
    Platform/Host/DiskFile.cpp
    Platform/Host/Locale.cpp
    Platform/Resources/Handles.cpp
    Platform/Resources/LayoutReader.cpp
    Platform/Resources/LayoutWriter.cpp
    Platform/Resources/OpenFiles.cpp
    Platform/Resources/ResourceMap.cpp
    Platform/Resources/Resources.cpp
    Platform/Resources/StringLists.cpp
    Platform/Script/Script.cpp
    Platform/TextEncoding/EncodingNames.cpp
    Platform/TextEncoding/EncodingTables.cpp
    Platform/TextEncoding/HostEncodings.cpp
    Platform/TextEncoding/IcuConverter.cpp
    Platform/TextEncoding/OwnConverters.cpp
    Platform/TextEncoding/TableConverter.cpp
    Platform/TextEncoding/TextEncodingConverter.cpp
    Platform/Uc16/FloatingText.cpp
    Platform/Uc16/Format.cpp
    Platform/Uc16/FormatArguments.cpp
    Platform/Uc16/FormatConversion.cpp
    Platform/Uc16/FormatTexts.cpp
    Platform/Uc16/IntegerText.cpp
    Platform/Uc16/NarrowText.cpp
    Platform/Uc16/Units.cpp
    Source/Base/Cpu.cpp
    Source/Base/UnitSearch.cpp
    Source/CInterface/Encodings.cpp
    Source/CInterface/Queries.cpp
    Source/CInterface/Relations.cpp
    Source/CInterface/Status.cpp
    Source/CInterface/StringResources.cpp
    Source/CInterface/TimeStamps.cpp
    Source/CInterface/URIs.cpp
    Source/Mutex/Mutex.cpp
    Source/Transcoder/ConverterCache.cpp
    Source/Transcoder/LossyConverter.cpp
    Source/Transcoder/ResizeUncleared.cpp
    Source/Transcoder/StreamConverter.cpp
    Source/Transcoder/Transcoder.cpp
    Source/Transcoder/WholeText.cpp
    Source/TimeStamp/TimeStamp.cpp
    Source/URI/CharacterClasses.cpp
    Source/URI/Components.cpp
    Source/URI/EncodedForm.cpp
    Source/URI/Escaping.cpp
    Source/URI/LocalPaths.cpp
    Source/URI/Parser.cpp
    Source/URI/PathNames.cpp
    Source/URI/Paths.cpp
    Source/URI/Query.cpp
    Source/URI/Record.cpp
    Source/URI/Redaction.cpp
    Source/URI/References.cpp
    Source/URI/Relations.cpp
    Source/URI/Serialiser.cpp
    Source/Utf8/Utf8Avx512.cpp
    Source/Utf8/Utf8Neon.cpp
    Source/Utf8/Utf8Sse41.cpp
    cstring/Buffer.cpp
    cstring/Editing.cpp
    cstring/FixedAlloc.cpp
    cstring/Formatting.cpp
    cstring/HostStrings.cpp
    cstring/Parts.cpp
    cstring/Searching.cpp
    cstring/RuntimeNames.cpp
    cstring/StringResources.cpp
    cstring/StringResourcesByName.cpp
    cstring/StringStorage.cpp
    cstring/Utf8.cpp
)

# Files of more than 2 GB and dates after 2038 where the C library has narrow types for them as well.
set(LUM_WIDE_FILES _FILE_OFFSET_BITS=64 _TIME_BITS=64)

include(GNUInstallDirs)
find_package(ICU REQUIRED COMPONENTS uc data)

# Tables of strings that are property lists are all that needs libplist.
set(LUM_WITH_PLIST AUTO CACHE STRING "Read tables of strings that are property lists: ON needs libplist, AUTO takes it where it is")
set_property(CACHE LUM_WITH_PLIST PROPERTY STRINGS AUTO ON OFF)
if(LUM_WITH_PLIST)
    find_path(LUM_LIBPLIST_HEADERS plist/plist.h)
    find_library(LUM_LIBPLIST plist-2.0)
endif()
if(LUM_WITH_PLIST AND LUM_LIBPLIST AND LUM_LIBPLIST_HEADERS)
    set(LUM_READS_PLIST ON)
    list(APPEND LUM_SOURCES Platform/CoreFoundation/BinaryListCheck.cpp Platform/CoreFoundation/PropertyListTable.cpp
         Platform/CoreFoundation/XmlListCheck.cpp)
else()
    if(LUM_WITH_PLIST AND NOT LUM_WITH_PLIST STREQUAL AUTO)
        message(FATAL_ERROR "LUM_WITH_PLIST is ${LUM_WITH_PLIST}, and libplist is not found (Debian's libplist-dev)")
    endif()
    set(LUM_READS_PLIST OFF)
    list(APPEND LUM_SOURCES Platform/CoreFoundation/NoPropertyLists.cpp)
    message(STATUS "Lum is built without libplist: tables of strings that are property lists are not read, all else is there")
endif()

# lum_use(<target>): what a library made of these sources asks of its users, and links.
function(lum_use target)
    target_compile_features(${target} PUBLIC cxx_std_20)
    target_include_directories(
        ${target}
        PUBLIC "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>" "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>"
        PRIVATE ${PROJECT_SOURCE_DIR})
    target_link_libraries(${target} PRIVATE ICU::uc ICU::data)
    if(LUM_READS_PLIST)
        target_link_libraries(${target} PRIVATE "$<BUILD_INTERFACE:${LUM_LIBPLIST}>" "$<INSTALL_INTERFACE:plist-2.0>")
    endif()
endfunction()

function(lum_add_library target)
    list(TRANSFORM LUM_SOURCES PREPEND ${PROJECT_SOURCE_DIR}/ OUTPUT_VARIABLE sources)
    add_library(${target} ${sources})
    lum_use(${target})
    set_target_properties(
        ${target}
        PROPERTIES CXX_EXTENSIONS OFF
                   CXX_VISIBILITY_PRESET hidden
                   VISIBILITY_INLINES_HIDDEN ON
                   POSITION_INDEPENDENT_CODE ON
                   VERSION ${PROJECT_VERSION}
                   SOVERSION ${PROJECT_VERSION_MAJOR})
    target_compile_definitions(${target} PRIVATE LUM_NATIVE_PATHS=${LUM_NATIVE_PATHS} $<$<BOOL:${LUM_NO_POOLS}>:LUM_NO_POOLS>
                                                 ${LUM_WIDE_FILES})
    # For std::string::resize_and_overwrite; the spelling that both compilers know.
    set_source_files_properties(${PROJECT_SOURCE_DIR}/Source/Transcoder/ResizeUncleared.cpp
                                PROPERTIES COMPILE_OPTIONS -std=c++2b)
    # The tests put this one in its place, built for another style of paths.
    set_source_files_properties(${PROJECT_SOURCE_DIR}/Source/URI/LocalPaths.cpp PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
    # Calls inside the library are not meant to be replaced from outside.
    target_compile_options(${target} PRIVATE -fno-semantic-interposition)
    target_link_options(${target} PRIVATE LINKER:-Bsymbolic-functions)
    lum_set_warnings(${target})
    lum_harden(${target})
endfunction()
