quorbel_test(shell_editor_tests
  SOURCES
    editor/EditorCommandsTest.cpp
    editor/EditorOpenTest.cpp
    editor/EditorSaveTest.cpp
    editor/StartUpTest.cpp
  LIBS quorbel_shell)

if(TARGET quorbel_editor_ui)
  find_package(Qt6 REQUIRED COMPONENTS Test)
  quorbel_test(shell_editor_window_tests
    SOURCES editor/EditorWindowTest.cpp
    LIBS quorbel_editor_ui Qt6::Test)
endif()
