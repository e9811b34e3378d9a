# The folders of a job (file filter, subfolder scan, mirrored targets), the run over them
# and its finishing steps.
target_sources(quorbel_batch PRIVATE
  FolderScan.cpp
  BatchSession.cpp
  BatchFinish.cpp
)
# The wizard's steps and picture list, without the window.
target_sources(quorbel_batch PRIVATE
  WizardSteps.cpp
  PictureList.cpp
)
