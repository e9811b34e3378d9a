#pragma once
// A main window model with every port scripted: message boxes and dialogs answered in
// order, stand-in desktop programs first on PATH that log their arguments, and long work
// run at once on the test's thread.
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "FreshSettings.h"
#include "Pictures.h"
#include "StandIns.h"
#include "output/CodecRegistry.h"
#include "output/Codecs.h"
#include "platform/Desktop.h"
#include "platform/FileDialogs.h"
#include "editor/EditorModel.h"
#include "editor/RawPicture.h"

namespace quorbel::test {

class RecordingView : public EditorView {
public:
    void StatusChanged(const std::string& text) override { statuses.push_back(text); }
    void WaitShown(const std::string& text) override { waits.push_back(text); }
    void PreviewReady(const cDib&) override { ++previews; }
    void ExitRequested() override { exited = true; }
    void PresetsChanged() override { ++presetRefills; }
    std::vector<std::string> statuses, waits;
    int presetRefills = 0, previews = 0;
    bool exited = false;
};

// Records which windows were asked for; fitted and clipboard are handed out once.
class RecordingWindows : public EditorWindows {
public:
    void OpenBatchWizard(WizardJob job) override { batches.push_back(job); }
    void OpenForums() override { calls.push_back("forums"); }
    void OpenPaintEditor() override { calls.push_back("paint"); }
    bool OpenPresetEditor() override { return presetsChange; }
    std::optional<cDib> FitToFileSize(const cDib&) override { return Take(fitted); }
    std::optional<cDib> PastePicture() override { return Take(clipboard); }
    std::optional<cDib> RunEffect(EffectDialog, const cDib&, const std::string&) override {
        calls.push_back("effect");
        return std::nullopt;
    }
    static std::optional<cDib> Take(cDib& d) { return d.hDIB() ? std::optional<cDib>(std::move(d)) : std::nullopt; }
    std::vector<WizardJob> batches;
    std::vector<std::string> calls;
    cDib clipboard, fitted;
    bool presetsChange = false;
};

inline Px Negative(Px p) { return {uint8_t(255 - p.b), uint8_t(255 - p.g), uint8_t(255 - p.r), p.x}; }

class EditorFixture : public FreshSettings {
protected:
    void SetUp() override {
        FreshSettings::SetUp();
        InitialiseDataFolder();
        ASSERT_TRUE(StartCodecRegistry(token_, messages_));
        pictures_ = root_ / "pictures";
        fs::create_directories(pictures_);
        help_ = root_ / "help";
        standIns_.emplace(root_ / "bin");
        ::setenv("XDG_CURRENT_DESKTOP", "GNOME", 1);
        standIns_->Add("xdg-open");
        standIns_->Add("xdg-mime", 0, "firefox.desktop");
        model_ = std::make_unique<EditorModel>(
            EditorServices{messages_, dialogs_, desktop_, windows_, tasks_, undo_, help_.string()});
        model_->SetView(&view_);
        model_->Load();
    }

    void TearDown() override {
        model_.reset();
        GdiplusShutdown(token_);
        standIns_.reset();
        FreshSettings::TearDown();
    }

    std::string Calls() const { return standIns_->Calls(); }

    std::string SavePng(const std::string& name, const cDib& picture) {
        std::vector<uint8_t> bytes;
        EXPECT_TRUE(EncodePng(picture, bytes));
        WriteBytes(pictures_ / name, bytes);
        return (pictures_ / name).string();
    }

    // Opens a new picture through the dialog, answering it with path.
    void OpenThroughDialog(const std::string& path) {
        dialogs_.AnswerOpen(path);
        model_->Dispatch("Browse");
    }

    std::string DataFile(const std::string& name) const { return DataFolder() + name; }

    uintptr_t token_ = 0;
    fs::path pictures_, help_;
    std::optional<StandIns> standIns_;
    ScriptedMessageBox messages_;
    ScriptedFileDialogs dialogs_;
    Desktop desktop_{messages_};
    RecordingWindows windows_;
    InlineTaskRunner tasks_;
    UndoHistory undo_;
    RecordingView view_;
    std::unique_ptr<EditorModel> model_;
};

}  // namespace quorbel::test
