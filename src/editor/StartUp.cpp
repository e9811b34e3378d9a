#include "editor/StartUp.h"

#include <filesystem>

#include "core/SafeFile.h"
#include "output/CodecRegistry.h"
#include "settings/AppFolders.h"
#include "settings/DataFolder.h"
#include "settings/SettingsStore.h"
#include "settings/Version.h"
#include "editor/EditorTexts.h"

namespace quorbel {
namespace {

// From the version on, a failing step must not stop the start: the next one runs.
template <class F>
void Step(F&& step) {
    try {
        step();
    } catch (...) {
    }
}

}  // namespace

StartUpResult RunStartUp(UndoHistory& undo, StartUpHost& host, MessageBox& messages, int major, int minor,
                         int revision) {
    StartUpResult result;
    undo.ClearTable();
    InitialiseDataFolder();
    // Settings files a killed earlier run left half-written are cleared before any is read.
    RemoveStaleTemporaries(SettingsFolder());
    RemoveStaleTemporaries(DataFolder());
    WriteVersion(major, minor, revision);

    Step([&] { result.codecsStarted = StartCodecRegistry(result.codecToken, messages); });
    EditorModel* editor = nullptr;
    Step([&] { editor = &host.ShowMainWindow(); });
    if (!editor) return result;
    Step([&] {
        editor->SetRememberedSize(GetSetting(kAppName, "Options", "Scale", "Inches"),
                                  GetSetting(kAppName, "Options", "Width", "6"),
                                  GetSetting(kAppName, "Options", "Height", "4"));
    });
    // Read as the program always has; no tip window is opened whatever it says.
    Step([&] { (void)GetSetting(kAppName, "Options", "Show Tips at Startup", "0"); });
    Step([&] { host.LayOut(); });
    Step([&] {
        if (GetSetting(kAppName, "Update", "FirstRun", "0") != "0") return;
        SaveSetting(kAppName, "Update", "FirstRun", "1");
        const bool yes = messages.Show(std::string(kUpdateQuestion), MsgButtons::YesNo, MsgIcon::Question,
                                       std::string(kUpdateTitle)) == MsgResult::Yes;
        // The update check itself is not part of this program yet: the answer is kept for it.
        SaveSetting(kAppName, "Update", "CheckForUpdates", yes ? "1" : "0");
        if (yes) host.OpenUpdateCheck();
    });
    Step([&] {
        if (GetSetting(kAppName, "Welcome", "Show", "1") == "1") result.choice = host.ShowWelcome(*editor);
    });
    Step([&] {
        if (result.choice == WelcomeChoice::Open) {
            editor->Open();
        } else if (result.choice == WelcomeChoice::LastEdited) {
            const std::string last = GetSetting(kAppName, "Images", "Last Opened", "");
            std::error_code ec;
            if (!last.empty() && std::filesystem::is_regular_file(last, ec)) editor->Open(last);
        }
    });
    return result;
}

}  // namespace quorbel
