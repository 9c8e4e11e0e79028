# Install rules and the relocatable CMake package:
#   find_package(Zalt_Lts CONFIG REQUIRED)
#   target_link_libraries(app PRIVATE Zalt::Lts)
# and, when the catalogue component was built:
#   find_package(Zalt_Lts CONFIG REQUIRED COMPONENTS Catalogue)
#   target_link_libraries(app PRIVATE Zalt::LtsCatalogue)
# and, when the display component was built:
#   find_package(Zalt_Lts CONFIG REQUIRED COMPONENTS Display)
#   target_link_libraries(app PRIVATE Zalt::LtsDisplay)
# The package does not carry Boost: its config file looks for the Boost headers
# 1.74 or newer on the consumer's machine, and names the known components when
# asked for one it does not have (Zalt_LtsConfig.cmake.in).
include(CMakePackageConfigHelpers)

set(ZALT_LTS_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/Zalt_Lts)

install(TARGETS Tovra_Format Tovra_Utils Tovra_Mdib
  EXPORT TovraTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(TARGETS Zalt_Lts
  EXPORT Zalt_LtsTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

install(DIRECTORY ${PROJECT_SOURCE_DIR}/src/ ${ZALT_LTS_GENERATED_INCLUDE_DIR}/
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  FILES_MATCHING PATTERN "*.h" PATTERN Catalogue EXCLUDE PATTERN Display EXCLUDE)

install(EXPORT TovraTargets NAMESPACE Tovra:: DESTINATION ${ZALT_LTS_PACKAGE_DIR})
install(EXPORT Zalt_LtsTargets NAMESPACE Zalt:: DESTINATION ${ZALT_LTS_PACKAGE_DIR})

# The catalogue component has its own export set, so that the package's
# config file loads it only for find_package(... COMPONENTS Catalogue).
if(ZALT_LTS_CATALOGUE)
  install(TARGETS Zalt_LtsCatalogue
    EXPORT Zalt_LtsCatalogueTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(TARGETS zalt-lts-catalogue RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/src/Zalt/Catalogue/ ${ZALT_LTS_GENERATED_INCLUDE_DIR}/Zalt/Catalogue/
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/Zalt/Catalogue
    FILES_MATCHING PATTERN "*.h" PATTERN Private EXCLUDE)
  install(EXPORT Zalt_LtsCatalogueTargets NAMESPACE Zalt:: DESTINATION ${ZALT_LTS_PACKAGE_DIR})
endif()

# The display component likewise, loaded for find_package(... COMPONENTS
# Display), which brings Catalogue with it: its library links the catalogue's.
# HarfBuzz, FreeType and FriBidi are private to it: the package needs none.
if(ZALT_LTS_DISPLAY)
  install(TARGETS Zalt_LtsDisplay
    EXPORT Zalt_LtsDisplayTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/src/Zalt/Display/ ${ZALT_LTS_GENERATED_INCLUDE_DIR}/Zalt/Display/
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/Zalt/Display
    FILES_MATCHING PATTERN "*.h" PATTERN Private EXCLUDE)
  install(EXPORT Zalt_LtsDisplayTargets NAMESPACE Zalt:: DESTINATION ${ZALT_LTS_PACKAGE_DIR})
endif()

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/Zalt_LtsConfig.cmake.in
  ${PROJECT_BINARY_DIR}/Zalt_LtsConfig.cmake
  INSTALL_DESTINATION ${ZALT_LTS_PACKAGE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/Zalt_LtsConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/Zalt_LtsConfig.cmake
  ${PROJECT_BINARY_DIR}/Zalt_LtsConfigVersion.cmake
  ${PROJECT_SOURCE_DIR}/cmake/ZaltLtsHeaderRoots.cmake
  DESTINATION ${ZALT_LTS_PACKAGE_DIR})
