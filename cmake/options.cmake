# Flags shared by the targets, as interface libraries.
add_library(qx_warnings INTERFACE)
add_library(qx_library_options INTERFACE)

if(MSVC)
  target_compile_options(qx_warnings INTERFACE /W4 /WX)
  target_compile_options(qx_library_options INTERFACE /fp:precise /GR-)
else()
  target_compile_options(qx_warnings INTERFACE -Wall -Wextra -Wshadow -Wconversion -Werror)
  # One rounding per operation gives the same bits on every platform; sqrt needs no errno.
  add_compile_options(-ffp-contract=off)
  target_compile_options(qx_library_options INTERFACE -fno-math-errno
    $<$<COMPILE_LANGUAGE:CXX>:-fno-exceptions -fno-rtti>)
endif()

if(MINGW)
  # MinGW's own C99 formatter: the same printed text as on Linux.
  add_compile_definitions(__USE_MINGW_ANSI_STDIO=1)
endif()

if(QX_SANITIZE)
  # The records are packed on 4-byte boundaries by contract, so alignment is not checked.
  add_compile_options(-fsanitize=address,undefined,float-cast-overflow -fno-sanitize=alignment
    -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined,float-cast-overflow)
endif()

if(QX_COVERAGE)
  add_compile_options(--coverage -O0)
  add_link_options(--coverage)
endif()
