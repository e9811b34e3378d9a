// Helper of the crash-safety test: rewrites one settings section as fast as it can, each
// time as one write of the next counter and a payload that depends on it, and prints each
// counter once its write has returned. Runs until killed. XDG_CONFIG_HOME says where.
#include <cstdio>
#include <string>

#include "settings/SettingsStore.h"

int main() {
    for (int i = std::stoi(quorbel::GetSetting("Quorbel", "Kill", "Counter", "0")) + 1;; ++i) {
        const std::string payload(8192, static_cast<char>('a' + i % 26));
        if (!quorbel::ReplaceSettings("Quorbel", "Kill", {{"Counter", std::to_string(i)}, {"Payload", payload}}))
            return 1;
        std::printf("%d\n", i);
        std::fflush(stdout);
    }
}
