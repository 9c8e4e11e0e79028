# The pictures of shown texts, part of Zalt_LtsDisplay: FreeType draws each
# text in its area's box and libpng encodes it, privately as the component's
# other libraries; PictureIndex names the files and lists them on one page.
find_package(PNG REQUIRED)
target_sources(Zalt_LtsDisplay PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/TextPicture.h ${CMAKE_CURRENT_LIST_DIR}/TextPicture.cpp
  ${CMAKE_CURRENT_LIST_DIR}/PictureIndex.h ${CMAKE_CURRENT_LIST_DIR}/PictureIndex.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Private/PngImage.h ${CMAKE_CURRENT_LIST_DIR}/Private/PngImage.cpp)
target_link_libraries(Zalt_LtsDisplay PRIVATE PNG::PNG)
