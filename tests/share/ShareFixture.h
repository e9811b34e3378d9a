#pragma once
// A scratch folder whose stand-in programs are alone on PATH (no real mail program or disc
// burner starts), the messages shown and a scripted desktop.
#include <gtest/gtest.h>

#include "Scratch.h"
#include "ScriptedDesktop.h"
#include "StandIns.h"
#include "core/MessageBox.h"

namespace quorbel::test {

class ShareTest : public ::testing::Test {
protected:
    ScratchDir dir_;
    StandIns bin_{dir_ / "bin", /*alone=*/true};
    ScriptedMessageBox messages_;
    ScriptedDesktop desktop_{messages_};
};

}  // namespace quorbel::test
