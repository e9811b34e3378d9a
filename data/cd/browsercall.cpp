// browsercall.exe [PAGE]: opens the slide show page that sits beside it on the disc in the
// user's default browser (autorun.inf starts it). Cross-built for Windows at build time.
#include <windows.h>
#include <shellapi.h>

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR commandLine, int) {
    wchar_t folder[MAX_PATH];
    const DWORD n = GetModuleFileNameW(nullptr, folder, MAX_PATH);
    if (n == 0 || n >= MAX_PATH) return 1;
    for (wchar_t* p = folder + n; p > folder; --p)
        if (*(p - 1) == L'\\') {
            *p = 0;
            break;
        }
    // The page named on the command line, without its quotes; slideshow.htm by default.
    wchar_t page[MAX_PATH] = L"slideshow.htm";
    if (commandLine && *commandLine) {
        int i = 0;
        for (const wchar_t* c = commandLine; *c && i < MAX_PATH - 1; ++c)
            if (*c != L'"') page[i++] = *c;
        page[i] = 0;
    }
    const INT_PTR r = reinterpret_cast<INT_PTR>(ShellExecuteW(nullptr, L"open", page, nullptr, folder, SW_SHOWNORMAL));
    if (r <= 32) {
        MessageBoxW(nullptr, L"Web Page not Opened", L"URL Failed", MB_OK | MB_ICONEXCLAMATION);
        return 1;
    }
    return 0;
}
