# kvxml_generate(TARGET tgt SCHEMAS a.xsd ... [OUT_DIR dir] [IMPORT_DIRS dir ...]
#                [NAMESPACE_MAP uri=cppns ...] [OPTIONS ...])
#
# Compiles the schemas with kvxsd at build time into OUT_DIR/<stem>.h and
# <stem>.cpp (default OUT_DIR: ${CMAKE_CURRENT_BINARY_DIR}/kvxsd/<tgt>), adds
# the sources to tgt, puts OUT_DIR on its include path and links kvxml::kvxml.
# kvxsd writes a depfile, so editing an included or imported schema
# regenerates too. OPTIONS are passed to kvxsd as given (e.g. --namespace ns).
include_guard(GLOBAL)

function(kvxml_generate)
  cmake_parse_arguments(PARSE_ARGV 0 arg "" "TARGET;OUT_DIR" "SCHEMAS;IMPORT_DIRS;NAMESPACE_MAP;OPTIONS")
  if(arg_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "kvxml_generate: unknown arguments: ${arg_UNPARSED_ARGUMENTS}")
  endif()
  if(NOT arg_TARGET OR NOT TARGET ${arg_TARGET})
    message(FATAL_ERROR "kvxml_generate: TARGET must name an existing target")
  endif()
  if(NOT arg_SCHEMAS)
    message(FATAL_ERROR "kvxml_generate: no SCHEMAS given")
  endif()
  if(NOT TARGET kvxml::kvxsd)
    message(FATAL_ERROR "kvxml_generate: the kvxml::kvxsd program is not available")
  endif()
  if(NOT arg_OUT_DIR)
    set(arg_OUT_DIR ${CMAKE_CURRENT_BINARY_DIR}/kvxsd/${arg_TARGET})
  endif()
  cmake_path(ABSOLUTE_PATH arg_OUT_DIR BASE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR} NORMALIZE)
  file(MAKE_DIRECTORY ${arg_OUT_DIR})

  # An alias cannot stand in a custom command's DEPENDS: use the real target.
  get_target_property(kvxsd kvxml::kvxsd ALIASED_TARGET)
  if(NOT kvxsd)
    set(kvxsd kvxml::kvxsd)
  endif()

  set(flags)
  foreach(dir IN LISTS arg_IMPORT_DIRS)
    cmake_path(ABSOLUTE_PATH dir BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR} NORMALIZE)
    list(APPEND flags -I ${dir})
  endforeach()
  foreach(map IN LISTS arg_NAMESPACE_MAP)
    list(APPEND flags --namespace-map ${map})
  endforeach()

  # The schemas of one call are compiled together, so that one importing
  # another includes its header instead of repeating its classes.
  set(schemas)
  set(outputs)
  set(depfile "")
  foreach(schema IN LISTS arg_SCHEMAS)
    cmake_path(ABSOLUTE_PATH schema BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR} NORMALIZE)
    cmake_path(GET schema STEM LAST_ONLY stem)
    list(APPEND schemas ${schema})
    list(APPEND outputs ${arg_OUT_DIR}/${stem}.h ${arg_OUT_DIR}/${stem}.cpp)
    if(NOT depfile)
      set(depfile ${arg_OUT_DIR}/${stem}.d)
    endif()
  endforeach()
  list(JOIN arg_SCHEMAS " " names)
  add_custom_command(OUTPUT ${outputs}
    COMMAND ${kvxsd} -o ${arg_OUT_DIR} --depfile ${depfile} ${flags} ${arg_OPTIONS} ${schemas}
    DEPENDS ${schemas} ${kvxsd}
    DEPFILE ${depfile}
    COMMENT "kvxsd ${names}"
    VERBATIM COMMAND_EXPAND_LISTS)
  target_sources(${arg_TARGET} PRIVATE ${outputs})
  target_include_directories(${arg_TARGET} PUBLIC $<BUILD_INTERFACE:${arg_OUT_DIR}>)
  target_link_libraries(${arg_TARGET} PUBLIC kvxml::kvxml)
endfunction()
