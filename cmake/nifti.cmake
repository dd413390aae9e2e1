# nifti2: the NIfTI C library (NIfTI-1 and NIfTI-2) with its stream layer. Looked up by hand, because the package file
# that Debian 12 installs for it gives wrong paths to the libraries.
find_path(ZN_NIFTI_INCLUDE_DIR nifti2_io.h PATH_SUFFIXES nifti REQUIRED)
find_library(ZN_NIFTI2_LIBRARY nifti2 REQUIRED)
find_library(ZN_ZNZ_LIBRARY znz REQUIRED)

add_library(nifti2 INTERFACE)
target_include_directories(nifti2 SYSTEM INTERFACE ${ZN_NIFTI_INCLUDE_DIR})
target_link_libraries(nifti2 INTERFACE ${ZN_NIFTI2_LIBRARY} ${ZN_ZNZ_LIBRARY})
