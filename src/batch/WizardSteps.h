#pragma once
// The batch wizard's steps without the window: the four jobs' captions and help pages, the
// step counter, and every check made before the user may leave a step, with its message.
#include <string>
#include <string_view>

#include "core/MessageBox.h"

namespace quorbel {

struct JobPage {
    std::string_view word;      // "Resize", "Email", "Web", "CD"
    std::string_view caption;   // the window's caption
    std::string_view helpPage;  // opened by Help
    std::string_view ready;     // the ready step's text
};
// The job's page; any other word gives the "Resize" one.
const JobPage& JobPageFor(std::string_view word);

inline constexpr int kStepChoose = 0, kStepFolders = 1, kStepPictures = 2, kStepSize = 3, kStepReady = 4;
inline constexpr const char* kGettingImagesText = "Getting images from source folder.";
inline constexpr const char* kGettingReadyText = "Getting ready to resize images.";

// What step 1 shows; the check appends the "/" to the folders.
struct FolderStepValues {
    std::string source;
    std::string target;
    bool rename = false;
    std::string newName;
    bool targetShown = true;  // the target's frame is shown for this job and destination
};

// Step 1's checks, in order, each with its message; the source-equals-target question. True
// to go on, and then the folders and the new name are remembered in the settings store.
bool CheckFolderStep(FolderStepValues& values, MessageBox& messages);

struct SizeStepValues {
    std::string width, height;  // as typed
    std::string outputType;
    std::string qualityName;
    std::string qualityValue;
};

// Step 3's checks, in order; true to go on.
bool CheckSizeStep(const SizeStepValues& values, MessageBox& messages);

// The step counter: Next adds one and Back takes one away; a check that fails puts it back.
class WizardSteps {
public:
    int Step() const { return step_; }
    // Moves on when check (run with the step being left) passes; returns the new step.
    template <typename Check>
    int Next(Check&& check) {
        const int was = step_++;
        if (!check(was)) step_ = was;
        return step_;
    }
    int Back() { return step_ > kStepChoose ? --step_ : step_; }
    void Restart() { step_ = kStepChoose; }

private:
    int step_ = kStepChoose;
};

}  // namespace quorbel
