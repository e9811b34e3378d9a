#pragma once
// The window tests' moves: find a child by object name, type, click, wait while events flow.
// Link quorbel_test_qt, which starts one QApplication (offscreen unless a display was asked
// for) for the whole test program.
#include <gtest/gtest.h>

#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <functional>

namespace quorbel::test {

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

inline void Click(QWidget& w, const char* button) { QTest::mouseClick(Child<QPushButton>(w, button), Qt::LeftButton); }

// Processes events until done() holds; false after timeoutMs.
inline bool WaitUntil(const std::function<bool()>& done, int timeoutMs = 20000) { return QTest::qWaitFor(done, timeoutMs); }

}  // namespace quorbel::test
