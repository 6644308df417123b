# Build settings shared by every target of the project.
add_library(mirvane_settings INTERFACE)
target_compile_features(mirvane_settings INTERFACE cxx_std_20)
set(CMAKE_CXX_EXTENSIONS OFF)
target_compile_options(mirvane_settings INTERFACE -Wall -Wextra -pedantic)
# Every text literal is a deliberate QString: Japanese never passes through a narrow char cast.
target_compile_definitions(mirvane_settings INTERFACE
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT)

option(MIRVANE_WERROR "Treat compiler warnings as errors" OFF)
if(MIRVANE_WERROR)
    target_compile_options(mirvane_settings INTERFACE -Werror)
endif()
