# Builds and runs a foreign project that uses the library.
#
#   cmake -D MODE=package|pkg-config|subdirectory|fetch -D SOURCE=<this project> -D BUILD=<its build>
#         -D WORK=<scratch folder> -D CXX=<compiler> -D LIBDIR=lib [-D TOOLCHAIN=...]
#         [-D EMULATOR=...] [-D BUILD_TYPE=...] -P run_consumer.cmake
cmake_minimum_required(VERSION 3.25)
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})

function(run)
  execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# The listening program must be told of the message.
function(run_listener program)
  execute_process(COMMAND ${EMULATOR} ${program} tracing_host.json
    WORKING_DIRECTORY ${SOURCE}/examples OUTPUT_QUIET ERROR_VARIABLE messages
    COMMAND_ERROR_IS_FATAL ANY)
  if(NOT messages MATCHES "^tracing_host.json:3:23: CTokenResolver::stringToInt: ")
    message(FATAL_ERROR "${program} was not told:\n${messages}")
  endif()
endfunction()

# Installs to one place and moves the tree to another: nothing installed may know where it was.
function(install_and_move)
  run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/first)
  file(RENAME ${WORK}/first ${WORK}/moved)
  set(known --include=*.cmake --include=*.pc)
  if(BUILD_TYPE STREQUAL "Release")
    set(known)  # without debug information, the binaries neither
  endif()
  execute_process(COMMAND grep -rlF ${known} -e ${WORK} -e ${SOURCE} ${WORK}/moved
    OUTPUT_VARIABLE files RESULT_VARIABLE code)
  if(NOT code EQUAL 1)
    message(FATAL_ERROR "installed files with absolute paths:\n${files}")
  endif()
endfunction()

function(build_with_cmake)
  run(${CMAKE_COMMAND} -S ${SOURCE}/tests/consumer -B ${WORK}/build -G Ninja
    -D CMAKE_CXX_COMPILER_LAUNCHER=ccache
    "-DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN}" ${ARGN})
  run(${CMAKE_COMMAND} --build ${WORK}/build -j 2)
  run(${EMULATOR} ${WORK}/build/consumer)
  run_listener(${WORK}/build/tracing_host)
endfunction()

if(MODE STREQUAL "package")
  install_and_move()
  build_with_cmake(-D CMAKE_PREFIX_PATH=${WORK}/moved)
elseif(MODE STREQUAL "pkg-config")
  install_and_move()
  # The installed files first, then those of the packages of the same architecture.
  set(libraries ${WORK}/moved/${LIBDIR})
  set(ENV{PKG_CONFIG_LIBDIR} ${libraries}/pkgconfig:/usr/lib/${ARCHITECTURE}/pkgconfig)
  execute_process(COMMAND pkg-config --cflags --libs TokenTemplateHandlers
    OUTPUT_VARIABLE line COMMAND_ERROR_IS_FATAL ANY)
  separate_arguments(line UNIX_COMMAND "${line}")
  foreach(source tests/consumer/main.cpp examples/tracing_host.cpp)
    get_filename_component(program ${source} NAME_WE)
    run(${CXX} -std=c++17 ${SOURCE}/${source} ${line} -Wl,-rpath,${libraries} -o ${WORK}/${program})
  endforeach()
  run(${EMULATOR} ${WORK}/main)
  run_listener(${WORK}/tracing_host)
elseif(MODE STREQUAL "subdirectory")
  build_with_cmake(-D SOURCE=${SOURCE})
elseif(MODE STREQUAL "fetch")
  build_with_cmake(-D FETCH=${SOURCE})
else()
  message(FATAL_ERROR "unknown MODE: ${MODE}")
endif()
