# The target sylvex_interface: from component/SylvexControl.idl come the type library
# (SylvexControl.tlb), the C++ declarations (SylvexControl_h.h) and the identifiers
# (SylvexControl_i.c), all in SYLVEX_INTERFACE_DIR, which users of the target have on their
# include path.
set(SYLVEX_IDL ${PROJECT_SOURCE_DIR}/component/SylvexControl.idl)

find_program(SYLVEX_WIDL ${SYLVEX_TRIPLE}-widl REQUIRED)

# The interface definitions and stdole2.tlb that the IDL imports. The includes are widl's alone:
# the compiler uses the declarations of mingw-w64.
set(SYLVEX_WIDL_INCLUDE /usr/include/wine/wine/windows CACHE PATH "folder of oaidl.idl")
set(SYLVEX_WIDL_LIBRARIES /usr/lib/x86_64-linux-gnu/wine/x86_64-windows
  CACHE PATH "folder of stdole2.tlb")

set(SYLVEX_INTERFACE_DIR ${PROJECT_BINARY_DIR}/interface)
set(SYLVEX_TLB ${SYLVEX_INTERFACE_DIR}/SylvexControl.tlb)
set(outputs ${SYLVEX_TLB}
  ${SYLVEX_INTERFACE_DIR}/SylvexControl_h.h
  ${SYLVEX_INTERFACE_DIR}/SylvexControl_i.c)
file(MAKE_DIRECTORY ${SYLVEX_INTERFACE_DIR})
file(GLOB imported CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/component/*.idl)

add_custom_command(
  OUTPUT ${outputs}
  COMMAND ${CMAKE_COMMAND} -D WIDL=${SYLVEX_WIDL} -D MODE=${SYLVEX_WIDL_MODE}
    -D INCLUDE=${SYLVEX_WIDL_INCLUDE} -D LIBRARIES=${SYLVEX_WIDL_LIBRARIES}
    -D IDL=${SYLVEX_IDL} -D OUTPUT_DIR=${SYLVEX_INTERFACE_DIR}
    -P ${PROJECT_SOURCE_DIR}/cmake/RunWidl.cmake
  DEPENDS ${SYLVEX_IDL} ${imported} ${PROJECT_SOURCE_DIR}/cmake/RunWidl.cmake
  COMMENT "Type library and declarations from SylvexControl.idl"
  VERBATIM)
add_custom_target(sylvex_idl DEPENDS ${outputs})

add_library(sylvex_interface STATIC ${SYLVEX_INTERFACE_DIR}/SylvexControl_i.c)
add_dependencies(sylvex_interface sylvex_idl)
# As system headers: generated code does not have to pass our warnings.
target_include_directories(sylvex_interface SYSTEM PUBLIC ${SYLVEX_INTERFACE_DIR})
