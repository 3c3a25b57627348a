# Installs what package-lock.json names into PACKAGES, never into the source tree. npm's own cache serves first, so a
# machine that has built the page once builds it again without a network.
file(COPY ${SOURCE}/package.json ${SOURCE}/package-lock.json DESTINATION ${PACKAGES})
execute_process(
  COMMAND ${NPM} ci --ignore-scripts --no-audit --no-fund --prefer-offline --loglevel=error
  WORKING_DIRECTORY ${PACKAGES}
  RESULT_VARIABLE result
  OUTPUT_VARIABLE output
  ERROR_VARIABLE output
)
if(NOT result EQUAL 0)
  message("${output}")
  message(FATAL_ERROR "The map page's packages (leaflet, world-atlas) could not be installed: npm found them neither in its cache nor in its registry. Build once with a network, or fill npm's cache (npm cache add).")
endif()
file(TOUCH ${PACKAGES}/installed)
