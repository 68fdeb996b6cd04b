# Sources of the output tools: range prompt, symbol key, text extraction,
# picture export and the chart copied as Mermaid text. Built into the add-in's library.
set(OUTPUT_SOURCES
  ${CMAKE_SOURCE_DIR}/output/CImageExportController.cpp
  ${CMAKE_SOURCE_DIR}/output/CExtractText.cpp
  ${CMAKE_SOURCE_DIR}/output/CFlowchartKey.cpp
  ${CMAKE_SOURCE_DIR}/output/CLoadPictureGDI.cpp
  ${CMAKE_SOURCE_DIR}/output/CMermaidCopy.cpp
  ${CMAKE_SOURCE_DIR}/output/CRangePrompt.cpp
  ${CMAKE_SOURCE_DIR}/output/PictureFolder.cpp
  ${CMAKE_SOURCE_DIR}/output/StorePictures.cpp
  ${CMAKE_SOURCE_DIR}/output/ucImages.cpp
  ${CMAKE_SOURCE_DIR}/output/ucShapes.cpp
)
