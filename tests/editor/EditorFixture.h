#pragma once
// A main window model with every port scripted: message boxes and dialogs answered in
// order, stand-in desktop programs first on PATH that log their arguments, and long work
// run at once on the test's thread.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "../settings/ShellFixture.h"
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
    int presetRefills = 0;
    int previews = 0;
    bool exited = false;
};

class RecordingWindows : public EditorWindows {
public:
    void OpenBatchWizard(WizardJob job) override { batches.push_back(job); }
    void OpenForums() override { calls.push_back("forums"); }
    std::optional<cDib> FitToFileSize(const cDib&) override {
        calls.push_back("makeitfit");
        if (!fitted.hDIB()) return std::nullopt;
        return std::move(fitted);
    }
    bool OpenPresetEditor() override {
        calls.push_back("sizes");
        return presetsChange;
    }
    void OpenPaintEditor() override { calls.push_back("paint"); }
    void EmailPicture(const std::string& path) override { calls.push_back("email " + path); }
    std::optional<cDib> RunEffect(EffectDialog, const cDib&, const std::string&) override {
        calls.push_back("effect");
        return std::nullopt;
    }
    std::optional<cDib> PastePicture() override {
        if (!clipboard.hDIB()) return std::nullopt;
        return std::move(clipboard);
    }
    std::vector<WizardJob> batches;
    std::vector<std::string> calls;
    cDib clipboard, fitted;
    bool presetsChange = false;
};

// A picture whose every pixel differs: blue = x * 10, green = y * 10, red = 200.
inline cDib MakePicture(int width, int height) {
    cDib picture;
    picture.Create(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            uint8_t* p = picture.Row(y) + x * 4;
            p[0] = static_cast<uint8_t>(x * 10);
            p[1] = static_cast<uint8_t>(y * 10);
            p[2] = 200;
        }
    return picture;
}

inline uint32_t PixelAt(const cDib& picture, int x, int y) {
    const uint8_t* p = picture.Row(y) + x * 4;
    return p[0] | (p[1] << 8) | (p[2] << 16);
}

class EditorFixture : public ShellFixture {
protected:
    void SetUp() override {
        ShellFixture::SetUp();
        InitialiseDataFolder();
        ASSERT_TRUE(StartCodecRegistry(token_, messages_));
        pictures_ = root_ / "pictures";
        std::filesystem::create_directories(pictures_);
        bin_ = root_ / "bin";
        std::filesystem::create_directories(bin_);
        help_ = root_ / "help";
        savedPath_ = std::getenv("PATH");
        ::setenv("PATH", (bin_.string() + ":" + savedPath_).c_str(), 1);
        ::setenv("XDG_CURRENT_DESKTOP", "GNOME", 1);
        StandIn("xdg-open");
        StandIn("xdg-mime", 0, "firefox.desktop");
        model_ = std::make_unique<EditorModel>(
            EditorServices{messages_, dialogs_, desktop_, windows_, tasks_, undo_, help_.string()});
        model_->SetView(&view_);
        model_->Load();
    }

    void TearDown() override {
        model_.reset();
        GdiplusShutdown(token_);
        ::setenv("PATH", savedPath_.c_str(), 1);
        ShellFixture::TearDown();
    }

    // A program that logs "name arg…" to calls.log and exits with code.
    void StandIn(const std::string& name, int code = 0, const std::string& output = "") {
        const auto p = bin_ / name;
        std::ofstream(p) << "#!/bin/sh\necho \"" << name << " $*\" >> '" << (bin_ / "calls.log").string()
                         << "'\nprintf '%s' '" << output << "'\nexit " << code << "\n";
        ::chmod(p.c_str(), 0755);
    }
    std::string Calls() const { return ReadFile(bin_ / "calls.log"); }

    std::string SavePng(const std::string& name, const cDib& picture) {
        std::vector<uint8_t> bytes;
        EXPECT_TRUE(EncodePng(picture, bytes));
        const auto path = pictures_ / name;
        WriteFile(path, std::string(bytes.begin(), bytes.end()));
        return path.string();
    }

    // Opens a new picture through the dialog, answering it with path.
    void OpenThroughDialog(const std::string& path) {
        dialogs_.AnswerOpen(path);
        model_->Dispatch("Browse");
    }

    std::string DataFile(const std::string& name) const { return DataFolder() + name; }

    uintptr_t token_ = 0;
    std::filesystem::path pictures_, bin_, help_;
    std::string savedPath_;
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
