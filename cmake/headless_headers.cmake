# The headers of the standard library that most sources of the headless host include. Those of the JSON and command-line
# libraries are left out on purpose: with them precompiled, every source took two seconds longer.
zn_shared_headers(headless_headers HEADERS <algorithm> <filesystem> <functional> <map> <optional> <string> <vector>)
set_target_properties(headless_headers PROPERTIES POSITION_INDEPENDENT_CODE ON CXX_VISIBILITY_PRESET hidden
                                                  VISIBILITY_INLINES_HIDDEN ON)
zn_reuse_headers(headless_headers headless)
