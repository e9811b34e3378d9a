#pragma once
// A desktop whose default browser and "open" are scripted and recorded.
#include <string>
#include <vector>

#include "Scratch.h"
#include "platform/Desktop.h"

namespace quorbel::test {

class ScriptedDesktop : public Desktop {
public:
    using Desktop::Desktop;
    std::string DefaultBrowser() override {
        if (!probe.empty()) probeSeen = ReadText(probe);
        return browser;
    }
    bool Open(const std::string& pathOrUrl) override {
        opened.push_back(pathOrUrl);
        return opens;
    }

    std::string browser = "firefox-esr.desktop", probeSeen;
    fs::path probe;  // its content is recorded when the browser is asked for
    bool opens = true;
    std::vector<std::string> opened;
};

}  // namespace quorbel::test
