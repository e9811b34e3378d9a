// One QApplication for every test of the windows, on the offscreen platform unless the
// environment asks for another.
#include <gtest/gtest.h>

#include <QApplication>

namespace {

class QtApplication : public ::testing::Environment {
public:
    void SetUp() override {
        if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
        app_ = new QApplication(argc_, argv_);
    }
    void TearDown() override { delete app_; }

private:
    int argc_ = 1;
    char name_[24] = "quorbel_ui_tests";
    char* argv_[2] = {name_, nullptr};
    QApplication* app_ = nullptr;
};

[[maybe_unused]] const auto* const kQtApplication = ::testing::AddGlobalTestEnvironment(new QtApplication);

}  // namespace
