# The library, its tests and its examples build without a warning.
add_compile_options(-Wall -Wextra)
option(RUXLIB_WARNINGS_AS_ERRORS "Stop at a warning" ${PROJECT_IS_TOP_LEVEL})
if(RUXLIB_WARNINGS_AS_ERRORS)
    add_compile_options(-Werror)
endif()
