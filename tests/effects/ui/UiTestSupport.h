#pragma once
// What the window tests share: waiting for a worker to finish while events flow.
#include <QTest>
#include <functional>

#include "../EffectsPictures.h"

namespace quorbel::test {

// Processes events until done() holds; false after timeoutMs.
inline bool WaitUntil(const std::function<bool()>& done, int timeoutMs = 20000) {
    return QTest::qWaitFor(done, timeoutMs);
}

}  // namespace quorbel::test
