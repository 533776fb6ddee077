# One list of warnings for every target of this project.
add_library(farm_warnings INTERFACE)
target_compile_options(farm_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
target_compile_definitions(farm_warnings INTERFACE QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII QT_DISABLE_DEPRECATED_BEFORE=0x060400)
