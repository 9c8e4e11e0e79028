# The optional display component, Zalt::LtsDisplay, on top of the catalogue
# component: what each display area of a device shows, measured in pixels with
# the device's fonts. The tool's display command comes with it.
# ZALT_LTS_DISPLAY tells the rest of the build whether the component is there.
# In a cross build HarfBuzz, FreeType, FriBidi and libpng come from
# CMAKE_FIND_ROOT_PATH, as libxml2 does.
set(ZALT_LTS_DISPLAY OFF)
if(ZALT_LTS_BUILD_DISPLAY)
  find_package(HarfBuzz QUIET)
  find_package(Freetype QUIET)
  find_package(FriBidi QUIET)
  find_package(PNG QUIET)
  if(HarfBuzz_FOUND AND Freetype_FOUND AND FriBidi_FOUND AND PNG_FOUND)
    set(ZALT_LTS_DISPLAY ON)
    add_subdirectory(${PROJECT_SOURCE_DIR}/src/Zalt/Display)
  else()
    message(STATUS "Display component skipped: it needs HarfBuzz, FreeType, FriBidi and libpng "
                   "(scripts/setup.sh installs libharfbuzz-dev, libfreetype-dev, libfribidi-dev and libpng-dev)")
  endif()
endif()
