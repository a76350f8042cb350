# Runs widl and fails when an output is missing: it sometimes reports an error (an importlib that
# it cannot find) on its standard error only, and exits 0.
set(base ${OUTPUT_DIR}/SylvexControl)
set(outputs ${base}.tlb ${base}_h.h ${base}_i.c)
file(REMOVE ${outputs})

foreach(what "-t|${base}.tlb" "-h|${base}_h.h" "-u|${base}_i.c")
  string(REPLACE "|" ";" what "${what}")
  list(GET what 0 option)
  list(GET what 1 output)
  execute_process(
    COMMAND ${WIDL} ${MODE} ${option} -I${INCLUDE} -L${LIBRARIES} -o ${output} ${IDL}
    RESULT_VARIABLE result ERROR_VARIABLE messages)
  if(messages)
    message("${messages}")
  endif()
  if(NOT result EQUAL 0 OR messages MATCHES "error:" OR NOT EXISTS ${output})
    file(REMOVE ${outputs})
    message(FATAL_ERROR "widl did not make ${output} (exit status ${result})")
  endif()
endforeach()

# widl gives the default of a reference to an object the type "pointer", which no reader takes; it is the number 0. (Both
# are packed into one word each, the type above the value; the default of a Boolean comes next.)
execute_process(
  COMMAND ${CMAKE_COMMAND} -E env LC_ALL=C
    sed -i [[s/\x00\x00\x00\xE8\(\x00\x00\x00\xAC\)/\x00\x00\x00\x8C\1/]] ${base}.tlb
  COMMAND_ERROR_IS_FATAL ANY)
