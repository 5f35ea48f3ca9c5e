# The installed library, used the ways a client project uses it. MODE:
#   install  cmake --install into a scratch prefix, then find_package and
#            pkg-config --static (the compiler called with what varnel.pc says)
#   shared   the project configured with BUILD_SHARED_LIBS=ON, installed, used
#            through find_package; the library exports nothing from the engine;
#            its programs' package depends on the libraries' packages
#   deb      cpack's Debian packages; the library's unpacked into a scratch
#            root (dpkg-deb -x, the system untouched) and built against
# Variables: MODE, BUILD_DIR (the project's build), SOURCE (this folder),
# PROJECT_SOURCE, WORK (scratch), CXX, GENERATOR and LAUNCHER (the compiler
# launcher or "") of the project's build,
# PROGRAMS (1 when the programs were built), QT (1 when the Qt binding was).
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})

function(run)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "failed: ${ARGV}\n${out}\n${err}")
  endif()
  set(last_output "${out}" PARENT_SCOPE)
endfunction()

# Builds and runs the consumer project with find_package(varnel) under prefix.
function(consume_with_cmake prefix name)
  run(${CMAKE_COMMAND} -S ${SOURCE} -B ${WORK}/${name} -DCMAKE_PREFIX_PATH=${prefix}
      -DCMAKE_CXX_COMPILER=${CXX} -DQT=${QT})
  run(${CMAKE_COMMAND} --build ${WORK}/${name})
  run(${WORK}/${name}/consumer)
  message(STATUS "${name}: ${last_output}")
  if(QT)
    run(${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen ${WORK}/${name}/consumer_qt)
    message(STATUS "${name} qt: ${last_output}")
  endif()
endfunction()

# Fails unless the Debian package Deb depends on each of Needs (package names).
function(expect_depends deb)
  run(dpkg-deb --field ${deb} Depends)
  foreach(need ${ARGN})
    if(NOT last_output MATCHES "(^|, )${need} \\(= ")
      message(FATAL_ERROR "${deb} does not depend on ${need} of its version: ${last_output}")
    endif()
  endforeach()
endfunction()

# Compiles and runs the consumer with only what pkg-config says of varnel.pc.
function(consume_with_pkg_config pc_dir name)
  set(ENV{PKG_CONFIG_PATH} ${pc_dir})
  run(pkg-config --cflags --libs --static varnel)
  string(STRIP "${last_output}" flags)
  separate_arguments(flags UNIX_COMMAND "${flags}")
  run(${CXX} ${SOURCE}/main.cpp -o ${WORK}/${name} ${flags})
  run(${WORK}/${name})
  message(STATUS "${name}: ${last_output}")
endfunction()

if(MODE STREQUAL "install")
  run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${WORK}/prefix)
  if(EXISTS ${WORK}/prefix/bin)
    message(FATAL_ERROR "the library's install put programs in bin/")
  endif()
  consume_with_cmake(${WORK}/prefix find_package)
  file(GLOB pc_dir ${WORK}/prefix/lib*/pkgconfig)
  consume_with_pkg_config("${pc_dir}" pkg_config)
elseif(MODE STREQUAL "shared")
  # Beside the project's build folder, at the same depth: the compiler cache
  # then finds the objects it already built.
  set(shared_build ${BUILD_DIR}-shared)
  run(${CMAKE_COMMAND} -S ${PROJECT_SOURCE} -B ${shared_build} -G ${GENERATOR} -DBUILD_SHARED_LIBS=ON
      -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=${CXX}
      -DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER} -DVARNEL_BUILD_TESTS=OFF
      -DVARNEL_BUILD_BENCH=OFF -DVARNEL_BUILD_APPS=${PROGRAMS} -DVARNEL_BUILD_QT=${QT})
  run(${CMAKE_COMMAND} --build ${shared_build})
  run(${CMAKE_COMMAND} --install ${shared_build} --prefix ${WORK}/prefix)
  file(GLOB library ${WORK}/prefix/lib*/libvarnel.so)
  run(objdump -p ${library})
  if(NOT last_output MATCHES "SONAME +libvarnel\\.so\\.[0-9]+\n")
    message(FATAL_ERROR "libvarnel.so has no versioned SONAME:\n${last_output}")
  endif()
  run(nm -D -C --defined-only ${library})
  if(last_output MATCHES "varnel::internal::|varnel::db::internal::")
    message(FATAL_ERROR "libvarnel.so exports engine symbols")
  endif()
  consume_with_cmake(${WORK}/prefix shared)
  run(ldd ${WORK}/shared/consumer)
  if(NOT last_output MATCHES "libvarnel\\.so\\.[0-9]+ => ${WORK}/prefix")
    message(FATAL_ERROR "the consumer does not use the installed libvarnel.so:\n${last_output}")
  endif()
  if(PROGRAMS)
    run(cpack -G DEB -B ${WORK}/packages --config ${shared_build}/CPackConfig.cmake)
    file(GLOB programs_deb ${WORK}/packages/varnel-programs_*.deb)
    set(needs varnel-dev)
    if(QT)
      list(APPEND needs varnel-qt-dev)
    endif()
    expect_depends(${programs_deb} ${needs})
  endif()
elseif(MODE STREQUAL "deb")
  run(cpack -G DEB -B ${WORK}/packages --config ${BUILD_DIR}/CPackConfig.cmake)
  file(GLOB library_deb ${WORK}/packages/varnel-dev_*.deb)
  if(NOT library_deb)
    message(FATAL_ERROR "cpack made no varnel-dev package")
  endif()
  if(PROGRAMS)
    file(GLOB programs_deb ${WORK}/packages/varnel-programs_*.deb)
    run(dpkg-deb --contents ${programs_deb})
    if(NOT last_output MATCHES "usr/bin/varnel\n")
      message(FATAL_ERROR "varnel-programs does not hold the console:\n${last_output}")
    endif()
  endif()
  run(dpkg-deb -x ${library_deb} ${WORK}/root)
  if(QT)
    file(GLOB qt_deb ${WORK}/packages/varnel-qt-dev_*.deb)
    expect_depends(${qt_deb} varnel-dev)
    run(dpkg-deb -x ${qt_deb} ${WORK}/root)
  endif()
  if(EXISTS ${WORK}/root/usr/bin)
    message(FATAL_ERROR "varnel-dev holds programs")
  endif()
  consume_with_cmake(${WORK}/root/usr deb_find_package)
  file(GLOB pc_dir ${WORK}/root/usr/lib*/pkgconfig)
  consume_with_pkg_config("${pc_dir}" deb_pkg_config)
else()
  message(FATAL_ERROR "MODE must be install, shared or deb")
endif()
