#pragma once
// What the main window's logic needs from around it: a view that shows its state, the
// windows of other parts, and a runner for long work. The program supplies Qt ones; tests
// supply recording ones.
#include <functional>
#include <optional>
#include <string>

#include "imaging/cDib.h"

namespace quorbel {

// What the window shows. Every call comes on the thread that owns the model.
class EditorView {
public:
    virtual ~EditorView() = default;
    virtual void StatusChanged(const std::string& /*text*/) {}
    virtual void WaitShown(const std::string& /*text*/) {}
    virtual void WaitHidden() {}
    // A quick small decode of the picture being opened, shown until the full one arrives.
    virtual void PreviewReady(const cDib& /*preview*/) {}
    // The picture was replaced or changed: draw it again.
    virtual void PictureChanged() {}
    // Sizes, preset, unit, file type, toggles or zoom text changed.
    virtual void FieldsChanged() {}
    virtual void RecentFilesChanged() {}
    virtual void PresetsChanged() {}
    // "Exit": end the program now.
    virtual void ExitRequested() {}
};

enum class EffectDialog { Brightness, Contrast, ColourBalance, Sharpen, Soften, ImageEditor, Warp, Fisheye };
enum class WizardJob { Resize, Web, CD, Email };

// Windows that other parts of the program own. Each does nothing until its window exists.
class EditorWindows {
public:
    virtual ~EditorWindows() = default;
    virtual void OpenBatchWizard(WizardJob /*job*/) {}
    // Fits the picture under a file size; the fitted picture, or nothing when cancelled.
    virtual std::optional<cDib> FitToFileSize(const cDib& /*picture*/) { return std::nullopt; }
    virtual void OpenPaintEditor() {}
    virtual void OpenForums() {}
    virtual void EmailPicture(const std::string& /*path*/) {}
    // True when the stored presets changed, so the quick-size list must be filled again.
    virtual bool OpenPresetEditor() { return false; }
    virtual void Scan() {}
    // The changed picture when the user applied the effect, else nothing.
    virtual std::optional<cDib> RunEffect(EffectDialog /*which*/, const cDib& /*picture*/,
                                          const std::string& /*fileName*/) {
        return std::nullopt;
    }
    // The clipboard's picture, if it holds one.
    virtual std::optional<cDib> PastePicture() { return std::nullopt; }
};

// Runs long work away from the window. work gets a post function that runs a callback back
// on the owner's thread (for a preview); done runs on the owner's thread after work.
class TaskRunner {
public:
    using Post = std::function<void(std::function<void()>)>;
    virtual ~TaskRunner() = default;
    virtual void Run(std::function<void(const Post& post)> work, std::function<void()> done) = 0;
};

// Runs everything at once on the calling thread: for tests and for callers without a window.
class InlineTaskRunner final : public TaskRunner {
public:
    void Run(std::function<void(const Post& post)> work, std::function<void()> done) override {
        work([](std::function<void()> callback) { callback(); });
        done();
    }
};

}  // namespace quorbel
