# The main picture window: its logic in quorbel_shell, its windows in quorbel_editor_ui.
target_sources(quorbel_shell PRIVATE
  editor/EditorCommands.cpp
  editor/EditorEdits.cpp
  editor/EditorModel.cpp
  editor/EditorOpenSave.cpp
  editor/FolderPictures.cpp
  editor/RawPicture.cpp
  editor/SaveAsRules.cpp
  editor/StartUp.cpp
  editor/UndoHistory.cpp
  editor/Welcome.cpp
)
target_link_libraries(quorbel_shell PUBLIC quorbel_output quorbel_effects quorbel_platform)

if(QUORBEL_BUILD_APP)
  add_library(quorbel_editor_ui STATIC
    ui/frmEditor.cpp
    ui/frmWelcome.cpp
    ui/PictureCanvas.cpp
    ui/QtTaskRunner.cpp
    ui/QtEditorWindows.cpp
    ui/WaitWindow.cpp
    ui/AppStartUp.cpp
  )
  set_target_properties(quorbel_editor_ui PROPERTIES AUTOMOC ON)
  target_compile_definitions(quorbel_editor_ui PRIVATE QUORBEL_SOURCE_HELP="${PROJECT_SOURCE_DIR}/data/help")
  # quorbel_sizes_ui is defined by sizes.cmake, included after this file.
  target_link_libraries(quorbel_editor_ui PUBLIC quorbel_shell quorbel_output quorbel_effects
                        quorbel_platform_qt quorbel_sizes_ui Qt6::Widgets)
  # The batch wizard (src/batch/ui, defined later; names resolve when generating).
  target_link_libraries(quorbel_editor_ui PUBLIC quorbel_batch_ui)
  if(TARGET quorbel_effects_ui)
    target_link_libraries(quorbel_editor_ui PUBLIC quorbel_effects_ui)
    target_compile_definitions(quorbel_editor_ui PRIVATE QUORBEL_HAVE_EFFECTS_UI=1)
  endif()
endif()
