# Runs lpconv on one end-to-end case in a fresh directory and compares everything it leaves behind.
#   -D LPCONV=<path of the built lpconv>  -D CASE_DIR=<case folder>  -D WORK_DIR=<scratch folder>
#
# A case folder holds:
#   input/    files copied into the scratch folder before the run (usually model.lp)
#   args      the arguments, one per line (default: model.lp; an empty file: no argument)
#   argv0     optional: run the program through a link of this relative path, to pin the usage name
#   stdout, stderr, status    what the run must print and return (missing: empty, empty, 0)
#   expected/ the files the run must create, byte for byte; any other new file is an error
cmake_minimum_required(VERSION 3.25)

function(read_bytes path out)
  if(EXISTS "${path}")
    file(READ "${path}" hex HEX)
  else()
    set(hex "")
  endif()
  set(${out} "${hex}" PARENT_SCOPE)
endfunction()

set(run_dir "${WORK_DIR}/run")
file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${run_dir}")
if(EXISTS "${CASE_DIR}/input")
  file(COPY "${CASE_DIR}/input/" DESTINATION "${run_dir}")
endif()
file(GLOB_RECURSE files_before LIST_DIRECTORIES false RELATIVE "${run_dir}" "${run_dir}/*")

set(args "model.lp")
if(EXISTS "${CASE_DIR}/args")
  file(STRINGS "${CASE_DIR}/args" args)
endif()

set(program "${LPCONV}")
if(EXISTS "${CASE_DIR}/argv0")
  file(STRINGS "${CASE_DIR}/argv0" link_name)
  set(program "${WORK_DIR}/${link_name}")
  get_filename_component(link_dir "${program}" DIRECTORY)
  file(MAKE_DIRECTORY "${link_dir}")
  file(CREATE_LINK "${LPCONV}" "${program}" SYMBOLIC)
endif()

execute_process(
  COMMAND "${program}" ${args}
  WORKING_DIRECTORY "${run_dir}"
  INPUT_FILE /dev/null
  OUTPUT_FILE "${WORK_DIR}/actual.stdout"
  ERROR_FILE "${WORK_DIR}/actual.stderr"
  RESULT_VARIABLE status
  TIMEOUT 120)

set(failures "")

set(expected_status 0)
if(EXISTS "${CASE_DIR}/status")
  file(STRINGS "${CASE_DIR}/status" expected_status)
endif()
if(NOT "${status}" STREQUAL "${expected_status}")
  string(APPEND failures "exit status: expected ${expected_status}, got ${status}\n")
endif()

foreach(stream stdout stderr)
  read_bytes("${CASE_DIR}/${stream}" want)
  read_bytes("${WORK_DIR}/actual.${stream}" got)
  if(NOT want STREQUAL got)
    file(READ "${WORK_DIR}/actual.${stream}" got_text)
    string(APPEND failures "${stream} differs; got:\n[${got_text}]\n")
  endif()
endforeach()

file(GLOB_RECURSE files_after LIST_DIRECTORIES false RELATIVE "${run_dir}" "${run_dir}/*")
set(expected_files "")
if(EXISTS "${CASE_DIR}/expected")
  file(GLOB_RECURSE expected_files LIST_DIRECTORIES false RELATIVE "${CASE_DIR}/expected"
       "${CASE_DIR}/expected/*")
endif()
foreach(name IN LISTS expected_files)
  if(NOT EXISTS "${run_dir}/${name}")
    string(APPEND failures "missing output file ${name}\n")
    continue()
  endif()
  read_bytes("${CASE_DIR}/expected/${name}" want)
  read_bytes("${run_dir}/${name}" got)
  if(NOT want STREQUAL got)
    file(READ "${run_dir}/${name}" got_text)
    string(APPEND failures "output file ${name} differs; got:\n[${got_text}]\n")
  endif()
endforeach()
foreach(name IN LISTS files_after)
  list(FIND files_before "${name}" was_there)
  list(FIND expected_files "${name}" is_expected)
  if(was_there EQUAL -1 AND is_expected EQUAL -1)
    string(APPEND failures "unexpected output file ${name}\n")
  endif()
endforeach()

if(failures)
  message(FATAL_ERROR "case ${CASE_DIR}:\n${failures}")
endif()
