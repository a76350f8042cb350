# Shared by both Windows toolchains; SYLVEX_TRIPLE is set by the file that includes this one.
set(CMAKE_SYSTEM_NAME Windows)

# The posix thread model, because googletest needs std::mutex. -static links the thread library
# in, so nothing has to be installed beside a binary.
set(CMAKE_C_COMPILER ${SYLVEX_TRIPLE}-gcc-posix)
set(CMAKE_CXX_COMPILER ${SYLVEX_TRIPLE}-g++-posix)
set(CMAKE_RC_COMPILER ${SYLVEX_TRIPLE}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${SYLVEX_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
