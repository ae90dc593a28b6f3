# Installing the Python module: plain files that find the installed library above themselves, or by its SONAME. A
# package for a system whose Python looks elsewhere sets CHANNEL_PYTHON_DIR.

option(CHANNEL_INSTALL_PYTHON "Install the Python module, when Python is found" ${PROJECT_IS_TOP_LEVEL})
set(CHANNEL_PYTHON_DIR "lib/python3/dist-packages" CACHE STRING "Where the Python module goes, below the prefix")

find_package(Python3 3.11 QUIET COMPONENTS Interpreter)
if(CHANNEL_INSTALL_PYTHON AND Python3_Interpreter_FOUND)
  install(DIRECTORY python/channel_list DESTINATION "${CHANNEL_PYTHON_DIR}" COMPONENT python
          FILES_MATCHING PATTERN "*.py" PATTERN "py.typed" PATTERN "__pycache__" EXCLUDE)
endif()
