quorbel_test(sizes_tests
  SOURCES
    sizes/FitToFileSizeTests.cpp
    sizes/FitSettingsTests.cpp
    sizes/PresetEditModelTests.cpp
  LIBS quorbel_shell)

if(QUORBEL_BUILD_APP)
  find_package(Qt6 REQUIRED COMPONENTS Test)
  quorbel_test(sizes_ui_tests
    SOURCES
      sizes/QtTestApp.h
      sizes/frmCustomAddTests.cpp
      sizes/frmMakeItFitTests.cpp
    LIBS quorbel_sizes_ui Qt6::Test)
endif()
