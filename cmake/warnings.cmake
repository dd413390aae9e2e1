# Warnings for our own code. ZN_WERROR makes them errors; the CI presets switch it on, so that a newer compiler with
# a new warning never keeps a user from building.
option(ZN_WERROR "Treat warnings as errors" OFF)

add_library(zn_warnings INTERFACE)
target_compile_options(zn_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion $<$<BOOL:${ZN_WERROR}>:-Werror>)
