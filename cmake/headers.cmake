# Libraries of headers alone, as their packages install them. A folder of its own has links to them:
# a compiler for another system must not see all that lies beside them.
add_library(packaged_headers INTERFACE)
foreach(library CLI nlohmann)
  file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/headers)
  file(CREATE_LINK /usr/include/${library} ${CMAKE_BINARY_DIR}/headers/${library} SYMBOLIC)
endforeach()
target_include_directories(packaged_headers SYSTEM INTERFACE ${CMAKE_BINARY_DIR}/headers)
