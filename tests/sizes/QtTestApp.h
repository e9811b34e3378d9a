#pragma once
// One QApplication for the window tests (offscreen unless a display was asked for), and the
// few moves a user makes on them.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace quorbel::test {

inline void EnsureQtApp() {
    if (QApplication::instance()) return;
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "sizes_ui_tests";
    static char* argv[] = {name, nullptr};
    new QApplication(argc, argv);  // lives until the process ends
}

template <class T>
T* Child(QWidget& w, const char* name) {
    T* child = w.findChild<T*>(name);
    EXPECT_NE(child, nullptr) << name;
    return child;
}

// Replaces a field's text by typing, as a user would.
inline void Type(QWidget& w, const char* field, const QString& text) {
    auto* edit = Child<QLineEdit>(w, field);
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    QTest::keyClicks(edit, text);
}

inline void Click(QWidget& w, const char* button) {
    QTest::mouseClick(Child<QPushButton>(w, button), Qt::LeftButton);
}

}  // namespace quorbel::test
