# The libraries of the headless host, compiled to WebAssembly from the sources that scripts/debian_sources fetches, and
# links to the headers that Debian installs.
set(ZN_DEBIAN_SOURCES ${PROJECT_SOURCE_DIR}/build/sources CACHE PATH "Folder filled by scripts/debian_sources")
foreach(package libdeflate libisal nifticlib zlib)
    if(NOT EXISTS ${ZN_DEBIAN_SOURCES}/${package})
        message(FATAL_ERROR "${ZN_DEBIAN_SOURCES}/${package} is missing; scripts/web_build fetches it.")
    endif()
endforeach()

# Headers without code to link. The folder of Debian's own headers would hide those of the compiler.
set(ZN_WEB_HEADERS ${PROJECT_BINARY_DIR}/headers)
file(MAKE_DIRECTORY ${ZN_WEB_HEADERS})
foreach(headers CLI nlohmann eigen3/Eigen)
    get_filename_component(name ${headers} NAME)
    if(NOT EXISTS /usr/include/${headers})
        message(FATAL_ERROR "/usr/include/${headers} is missing; scripts/web_build installs it.")
    endif()
    file(CREATE_LINK /usr/include/${headers} ${ZN_WEB_HEADERS}/${name} SYMBOLIC)
endforeach()

# zn_add_debian_library(name FOLDER folder SOURCES file... INCLUDES folder... DEFINITIONS definition...)
function(zn_add_debian_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "FOLDER" "SOURCES;INCLUDES;DEFINITIONS;USES")
    list(TRANSFORM arg_SOURCES PREPEND ${ZN_DEBIAN_SOURCES}/${arg_FOLDER}/)
    list(TRANSFORM arg_INCLUDES PREPEND ${ZN_DEBIAN_SOURCES}/${arg_FOLDER}/)
    add_library(${name} STATIC ${arg_SOURCES})
    target_include_directories(${name} SYSTEM PUBLIC ${arg_INCLUDES})
    target_compile_definitions(${name} PUBLIC ${arg_DEFINITIONS})
    target_compile_options(${name} PRIVATE -w)
    target_link_libraries(${name} PUBLIC ${arg_USES})
endfunction()

enable_language(C)
zn_add_debian_library(web_zlib FOLDER zlib INCLUDES .
    SOURCES adler32.c compress.c crc32.c deflate.c gzclose.c gzlib.c gzread.c gzwrite.c infback.c inffast.c inflate.c
            inftrees.c trees.c uncompr.c zutil.c
    DEFINITIONS HAVE_UNISTD_H)
zn_add_debian_library(nifti2 FOLDER nifticlib INCLUDES nifti2 niftilib znzlib
    SOURCES nifti2/nifti2_io.c znzlib/znzlib.c
    DEFINITIONS HAVE_ZLIB
    USES web_zlib)
file(CREATE_LINK ${ZN_DEBIAN_SOURCES}/libisal/include ${ZN_WEB_HEADERS}/isa-l SYMBOLIC)
zn_add_debian_library(web_isal FOLDER libisal INCLUDES include
    SOURCES crc/crc_base.c crc/crc_base_aliases.c crc/crc64_base.c igzip/adler32_base.c igzip/encode_df.c
            igzip/flatten_ll.c igzip/huff_codes.c igzip/hufftables_c.c igzip/igzip.c igzip/igzip_base.c igzip/igzip_base_aliases.c
            igzip/igzip_icf_base.c igzip/igzip_icf_body.c igzip/igzip_inflate.c igzip/proc_heap_base.c)

target_include_directories(web_isal SYSTEM PUBLIC ${ZN_WEB_HEADERS})
target_sources(web_isal PRIVATE ${PROJECT_SOURCE_DIR}/web/engine/libraries/igzip_forwards.c)
set_property(SOURCE ${ZN_DEBIAN_SOURCES}/libisal/igzip/igzip_base_aliases.c APPEND PROPERTY COMPILE_OPTIONS
             "-Dset_long_icf_fg_base(a,b,c,d)=" "-Dgen_icf_map_h1_base(a,b,c)="
             -Dset_long_icf_fg=unused_long_icf -Dgen_icf_map_lh1=unused_icf_map)
set_property(SOURCE ${ZN_DEBIAN_SOURCES}/libisal/igzip/adler32_base.c APPEND PROPERTY COMPILE_OPTIONS
             -Dadler32_base=adler32_of_short)
add_library(zn_isal ALIAS web_isal)
zn_add_debian_library(zn_deflate FOLDER libdeflate INCLUDES .
    SOURCES lib/crc32.c lib/deflate_compress.c lib/gzip_compress.c lib/utils.c)

# Calls of Linux that are missing here.
add_compile_options("$<$<COMPILE_LANGUAGE:CXX>:SHELL:-include ${PROJECT_SOURCE_DIR}/web/engine/standard/linux_calls.h>")

# BLAS and LAPACK by Eigen, whose vectors are those of SSE4.1, as far as WebAssembly has the same.
add_library(zn_blas STATIC ${PROJECT_SOURCE_DIR}/web/engine/blas/eigen_products.cpp
                           ${PROJECT_SOURCE_DIR}/web/engine/blas/eigen_symmetric.cpp)
target_include_directories(zn_blas PUBLIC ${PROJECT_SOURCE_DIR}/web/engine/blas)
target_include_directories(zn_blas SYSTEM PRIVATE ${ZN_WEB_HEADERS})
target_compile_definitions(zn_blas PRIVATE EIGEN_MPL2_ONLY)
target_compile_options(zn_blas PRIVATE -msse4.1)
target_link_libraries(zn_blas PRIVATE zn_warnings)

foreach(headers CLI11::CLI11 nlohmann_json::nlohmann_json Threads::Threads)
    add_library(${headers} INTERFACE IMPORTED GLOBAL)
    target_include_directories(${headers} SYSTEM INTERFACE ${ZN_WEB_HEADERS})
endforeach()
