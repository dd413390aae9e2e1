# The libraries of the headless host, as Debian installs them. cmake/web_libraries.cmake has them for WebAssembly.
include(nifti)
find_package(CLI11 REQUIRED)
find_package(nlohmann_json REQUIRED)
find_package(Threads REQUIRED)

# zn_blas: OpenBLAS and LAPACKE
find_package(OpenBLAS REQUIRED)
find_path(ZN_LAPACKE_INCLUDE_DIR lapacke.h REQUIRED)
find_library(ZN_LAPACKE_LIBRARY lapacke REQUIRED)
add_library(zn_blas INTERFACE)
target_include_directories(zn_blas SYSTEM INTERFACE ${OpenBLAS_INCLUDE_DIRS} ${ZN_LAPACKE_INCLUDE_DIR})
target_link_libraries(zn_blas INTERFACE ${ZN_LAPACKE_LIBRARY} ${OpenBLAS_LIBRARIES})

# zn_isal: ISA-L, which inflates twice as fast as zlib. It does not deflate: its bytes depend on addresses and on the CPU.
find_path(ZN_ISAL_INCLUDE_DIR isa-l/igzip_lib.h REQUIRED)
find_library(ZN_ISAL_LIBRARY isal REQUIRED)
add_library(zn_isal INTERFACE)
target_include_directories(zn_isal SYSTEM INTERFACE ${ZN_ISAL_INCLUDE_DIR})
target_link_libraries(zn_isal INTERFACE ${ZN_ISAL_LIBRARY})

# zn_deflate: libdeflate, which deflates two to three times as fast as zlib at its fastest level and to a smaller size
find_path(ZN_DEFLATE_INCLUDE_DIR libdeflate.h REQUIRED)
find_library(ZN_DEFLATE_LIBRARY deflate REQUIRED)
add_library(zn_deflate INTERFACE)
target_include_directories(zn_deflate SYSTEM INTERFACE ${ZN_DEFLATE_INCLUDE_DIR})
target_link_libraries(zn_deflate INTERFACE ${ZN_DEFLATE_LIBRARY})
