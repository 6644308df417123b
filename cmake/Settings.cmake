# Build settings shared by every target of the project.
add_library(mirvane_settings INTERFACE)
target_compile_features(mirvane_settings INTERFACE cxx_std_20)
set(CMAKE_CXX_EXTENSIONS OFF)
target_compile_options(mirvane_settings INTERFACE -Wall -Wextra -pedantic
    $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast>)
# Binaries resolve their symbols at start and keep their relocations read-only.
target_link_options(mirvane_settings INTERFACE -Wl,-z,relro -Wl,-z,now)
# Every text literal is a deliberate QString: Japanese never passes through a narrow char cast.
target_compile_definitions(mirvane_settings INTERFACE
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
    # A connection names the object that receives it; iterators keep const apart.
    QT_NO_CONTEXTLESS_CONNECT
    QT_STRICT_ITERATORS)

option(MIRVANE_WERROR "Treat compiler warnings as errors" OFF)
if(MIRVANE_WERROR)
    target_compile_options(mirvane_settings INTERFACE -Werror)
endif()

# The whole suite under AddressSanitizer and UndefinedBehaviorSanitizer (scripts/test builds a
# tree of its own with it): a memory error or undefined behaviour ends the test that met it.
option(MIRVANE_SANITIZE "Build with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)
if(MIRVANE_SANITIZE)
    target_compile_options(mirvane_settings INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options(mirvane_settings INTERFACE -fsanitize=address,undefined)
endif()
