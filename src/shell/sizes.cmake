# The preset editor and fit to file size: logic into quorbel_shell, windows into their own
# Qt target.
target_sources(quorbel_shell PRIVATE
  sizes/FitSettings.cpp
  sizes/FitToFileSize.cpp
  sizes/PresetEditModel.cpp
)
target_link_libraries(quorbel_shell PUBLIC quorbel_output)

if(QUORBEL_BUILD_APP)
  add_library(quorbel_sizes_ui STATIC
    ui/frmCustomAdd.cpp
    ui/frmMakeItFit.cpp
  )
  set_target_properties(quorbel_sizes_ui PROPERTIES AUTOMOC ON)
  target_link_libraries(quorbel_sizes_ui PUBLIC quorbel_shell quorbel_output quorbel_platform_qt Qt6::Widgets)
endif()
