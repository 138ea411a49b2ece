# What every target of ours is compiled with.
add_library(corvin_flags INTERFACE)
target_compile_options(corvin_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Werror)
target_compile_definitions(
  corvin_flags
  INTERFACE QT_NO_CAST_FROM_ASCII
            QT_NO_CAST_TO_ASCII
            QT_NO_CAST_FROM_BYTEARRAY
            QT_NO_URL_CAST_FROM_STRING
            QT_NO_FOREACH
            QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
            QT_STRICT_ITERATORS
            QT_DEPRECATED_WARNINGS)

if(CORVIN_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
