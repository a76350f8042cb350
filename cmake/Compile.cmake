# sylvex_sources(<out> <folder>...): every .cpp under the folders, found again at each build.
function(sylvex_sources out)
  set(found)
  foreach(folder IN LISTS ARGN)
    file(GLOB_RECURSE files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*.cpp)
    list(APPEND found ${files})
  endforeach()
  set(${out} ${found} PARENT_SCOPE)
endfunction()

# sylvex_resources(<out> <folder>): the resource scripts of a folder, rebuilt when anything that
# they may embed changes (Ninja does not scan resource scripts for dependencies).
function(sylvex_resources out folder)
  file(GLOB scripts CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*.rc)
  file(GLOB embedded CONFIGURE_DEPENDS
    ${PROJECT_SOURCE_DIR}/${folder}/*.h ${PROJECT_SOURCE_DIR}/${folder}/*.ico
    ${PROJECT_SOURCE_DIR}/${folder}/*.bmp)
  set_property(SOURCE ${scripts} APPEND PROPERTY OBJECT_DEPENDS "${embedded}" ${SYLVEX_VERSION_HEADER})
  set(${out} ${scripts} PARENT_SCOPE)
endfunction()

# The version stands in project() alone.
set(SYLVEX_VERSION_HEADER ${PROJECT_BINARY_DIR}/include/sylvex_version.h)
configure_file(${PROJECT_SOURCE_DIR}/cmake/sylvex_version.h.in ${SYLVEX_VERSION_HEADER} @ONLY)

# What every target of this project is compiled with; googletest is not.
add_library(sylvex_options INTERFACE)
target_compile_features(sylvex_options INTERFACE cxx_std_20)
target_include_directories(sylvex_options INTERFACE ${PROJECT_SOURCE_DIR} ${PROJECT_BINARY_DIR}/include)
target_compile_options(sylvex_options INTERFACE
  # g++ 12 sees uninitialised members in every std::variant and std::optional that is moved.
  $<$<COMPILE_LANGUAGE:CXX>:-Wall -Wextra -Wpedantic -Werror -Wno-maybe-uninitialized>
  # Section garbage collection keeps unused parts of the static libraries out of the component;
  # the prefix map keeps build folders out of it.
  $<$<COMPILE_LANGUAGE:C,CXX>:-ffunction-sections -fdata-sections
    -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=>)
target_link_options(sylvex_options INTERFACE -Wl,--gc-sections)

if(WIN32)
  # Windows 7 is the oldest system; what is newer is looked up at run time.
  target_compile_definitions(sylvex_options INTERFACE
    UNICODE _UNICODE WINVER=0x0601 _WIN32_WINNT=0x0601 NTDDI_VERSION=0x06010000)
  # An instruction that faults can throw: the guard of a procedure makes it, and every clean-up runs.
  target_compile_options(sylvex_options INTERFACE
    $<$<COMPILE_LANGUAGE:CXX>:-fnon-call-exceptions -fasynchronous-unwind-tables>)
  # Nothing to install beside the binary, and the same bytes from the same sources.
  target_link_options(sylvex_options INTERFACE -static -Wl,--no-insert-timestamp)
else()
  # Only here: the macros of the Windows headers are full of C casts.
  target_compile_options(sylvex_options INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast>)
endif()

if(SYLVEX_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined
    -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
