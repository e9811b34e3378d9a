#include "EditorFixture.h"
#include "settings/AppFolders.h"
#include "settings/SettingsStore.h"
#include "settings/Version.h"
#include "editor/StartUp.h"

namespace quorbel::test {

class ScriptedStartUp : public StartUpHost {
public:
    ScriptedStartUp(EditorModel& editor, ScriptedMessageBox& messages) : editor_(editor), messages_(messages) {}
    EditorModel& ShowMainWindow() override {
        steps.push_back("main window, " + std::to_string(messages_.Shown().size()) + " messages");
        return editor_;
    }
    void LayOut() override {
        steps.push_back("lay out " + editor_.Unit() + " " + editor_.WidthText() + "x" + editor_.HeightText());
    }
    void OpenUpdateCheck() override { steps.push_back("update check"); }
    WelcomeChoice ShowWelcome(EditorModel&) override { return steps.push_back("welcome"), choice; }
    std::vector<std::string> steps;
    WelcomeChoice choice = WelcomeChoice::None;

private:
    EditorModel& editor_;
    ScriptedMessageBox& messages_;
};

class StartUpTest : public EditorFixture {
protected:
    StartUpResult Start() {
        StartUpResult result = RunStartUp(undo_, *host_, messages_, 2, 0, 13);
        GdiplusShutdown(result.codecToken);
        return result;
    }
    void SetUp() override {
        EditorFixture::SetUp();
        host_ = std::make_unique<ScriptedStartUp>(*model_, messages_);
    }
    std::unique_ptr<ScriptedStartUp> host_;
};

TEST_F(StartUpTest, FirstStartAsksAboutUpdatesOnceAndShowsTheWelcome) {
    messages_.Answer(MsgResult::Yes);
    const StartUpResult first = Start();
    EXPECT_TRUE(first.codecsStarted);
    // The version with one dot: the minor number runs on into the revision.
    EXPECT_EQ(GetSetting(kAppName, "Version", "Version") + " " + GetSetting(kAppName, "Version", "Ver"), "2.013 0");
    ASSERT_EQ(messages_.Shown().size(), 1u);
    EXPECT_EQ(messages_.Shown()[0].text, "Would you like to check for updates to the latest version?");
    EXPECT_EQ(std::tuple(messages_.Shown()[0].title, messages_.Shown()[0].buttons),
              std::tuple("Update?", MsgButtons::YesNo));
    EXPECT_EQ(GetSetting(kAppName, "Update", "FirstRun"), "1");
    EXPECT_EQ(host_->steps, (std::vector<std::string>{"main window, 0 messages", "lay out Inches 6x4", "update check",
                                                     "welcome"}));

    host_->steps.clear();
    messages_.Clear();
    Start();
    EXPECT_TRUE(messages_.Texts().empty());
    EXPECT_EQ(host_->steps.back(), "welcome");
}

TEST_F(StartUpTest, TheRememberedSizeAndAQuietStart) {
    for (auto [section, key, value] : {std::tuple{"Update", "FirstRun", "1"}, {"Welcome", "Show", "0"},
                                       {"Options", "Scale", "Centimeters"}, {"Options", "Width", "10"},
                                       {"Options", "Height", "15"}})
        SaveSetting(kAppName, section, key, value);
    SaveSetting(kAppName, "Images", "Last Opened", SavePng("last.png", Numbered(5, 5)));
    Start();
    EXPECT_EQ(host_->steps, (std::vector<std::string>{"main window, 0 messages", "lay out Centimeters 10x15"}));
    EXPECT_FALSE(model_->HasPicture() || !dialogs_.openRequests.empty() || !messages_.Texts().empty());
}

TEST_F(StartUpTest, TheWelcomeChoiceIsActedOn) {
    SaveSetting(kAppName, "Update", "FirstRun", "1");
    const std::string last = SavePng("last.png", Numbered(5, 5));
    SaveSetting(kAppName, "Images", "Last Opened", last);
    host_->choice = WelcomeChoice::LastEdited;
    Start();
    EXPECT_EQ(model_->Path(), last);

    // A last picture that has gone is passed over in silence.
    fs::remove(last);
    EditorModel fresh({messages_, dialogs_, desktop_, windows_, tasks_, undo_, help_.string()});
    ScriptedStartUp host(fresh, messages_);
    host.choice = WelcomeChoice::LastEdited;
    GdiplusShutdown(RunStartUp(undo_, host, messages_, 1, 0, 0).codecToken);
    EXPECT_FALSE(fresh.HasPicture());
    EXPECT_TRUE(messages_.Texts().empty());

    host_->choice = WelcomeChoice::Open;
    dialogs_.AnswerOpen(std::nullopt);
    Start();
    EXPECT_EQ(dialogs_.openRequests.size(), 1u);
}

TEST_F(StartUpTest, WelcomeButtons) {
    // button, ticked, choice, help page opened, "Show" after, picture still marked changed
    const std::tuple<WelcomeButton, bool, WelcomeChoice, const char*, const char*, bool> cases[] = {
        {WelcomeButton::Open, true, WelcomeChoice::Open, "", "1", false},
        {WelcomeButton::Close, true, WelcomeChoice::None, "", "1", false},
        {WelcomeButton::LastEdited, true, WelcomeChoice::LastEdited, "", "1", true},
        {WelcomeButton::GettingStarted, false, WelcomeChoice::GettingStarted, "GettingStarted.html", "0", true},
        {WelcomeButton::Tutorials, true, WelcomeChoice::None, "Tutorial%20Resizing%20Pictures.htm", "1", true},
        {WelcomeButton::BatchResize, true, WelcomeChoice::None, "", "1", true}};
    for (const auto& [button, tick, choice, page, show, changed] : cases) {
        SaveSetting(kAppName, "Welcome", "Show", "1");
        ::unlink((root_ / "bin" / "calls.log").c_str());
        WelcomeModel welcome(*model_, desktop_, help_.string());
        model_->SetChanged(true);
        welcome.showAtStartup = tick;
        welcome.Press(button);
        EXPECT_EQ(welcome.Choice(), choice) << page;
        EXPECT_TRUE(welcome.Closed());
        EXPECT_EQ(Calls(), *page ? "xdg-open file://" + help_.string() + "/" + page + "\n" : "") << page;
        EXPECT_EQ(GetSetting(kAppName, "Welcome", "Show", "1"), show);
        EXPECT_EQ(model_->Changed(), changed);
    }
    EXPECT_EQ(windows_.batches, std::vector<WizardJob>{WizardJob::Resize});
    EXPECT_EQ(GetSetting(kAppName, "MultiEdit", "Type"), "Resize");
}

}  // namespace quorbel::test
