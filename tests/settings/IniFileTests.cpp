#include <sys/resource.h>

#include <csignal>
#include <thread>

#include "FreshSettings.h"
#include "settings/IniFile.h"
#include "settings/ProfileString.h"

namespace quorbel::test {
namespace {

class IniEngine : public FreshSettings {
protected:
    fs::path Ini() const { return root_ / "test.ini"; }
    bool Write(std::string_view section, std::optional<std::string_view> key, std::optional<std::string_view> value) {
        return WritePrivateProfileString(section, key, value, Ini());
    }
    std::string Read(std::string_view section, std::string_view key, std::string_view def = "dflt") {
        return GetPrivateProfileString(section, key, def, Ini());
    }
};

// One file, one read, one write (a null key or value deletes), and the file after (null:
// the file as before with "Maximized=1" added).
struct EditCase {
    const char* before;
    const char *readSection, *readKey, *read;
    const char *section, *key, *value;
    bool written;
    const char* after;
};

constexpr const char* kMain = "[Main]\nLast Path=/home/a\nMaximized=0\n\n[Recent Files]\nFile 1=/p/one.jpg\n";
constexpr const char* kDelete = "; top\n[Keep]\nA=1\n[Gone]\n; belongs to Gone\nB=2\n[Keep2]\nC=3\nD=4\n";
constexpr const char* kGarbage =
    "\x01\x02 binary junk\n[Main\nKey=before any section\n[Main]\nno equals sign here\nLast Path=/x\n";

const EditCase kEdits[] = {
    // Names ignore case; every other line keeps its place; new keys end their section.
    {kMain, "recent FILES", "FILE 1", "/p/one.jpg", "MAIN", "last path", "/home/b", true,
     "[Main]\nLast Path=/home/b\nMaximized=0\n\n[Recent Files]\nFile 1=/p/one.jpg\n"},
    {kMain, "Main", "Absent", "dflt", "main", "Window Position", "1,2,3,4", true,
     "[Main]\nLast Path=/home/a\nMaximized=0\nWindow Position=1,2,3,4\n\n[Recent Files]\nFile 1=/p/one.jpg\n"},
    {kMain, "Main", "Maximized", "0", "Extra", "Key", "v", true,
     "[Main]\nLast Path=/home/a\nMaximized=0\n\n"
     "[Recent Files]\nFile 1=/p/one.jpg\n\n[Extra]\nKey=v\n"},
    // An absent key deletes the section (its comments too), an absent value the key.
    {kDelete, "Gone", "B", "2", "GONE", nullptr, nullptr, true, "; top\n[Keep]\nA=1\n[Keep2]\nC=3\nD=4\n"},
    {kDelete, "Keep", "A", "1", "Keep2", "c", nullptr, true,
     "; top\n[Keep]\nA=1\n[Gone]\n; belongs to Gone\nB=2\n[Keep2]\nD=4\n"},
    // Garbage, cut-off and empty files read as defaults and survive a write.
    {kGarbage, "Main", "Last Path", "/x", "Main", "Maximized", "1", true, nullptr},
    {kGarbage, "Main", "Key", "dflt", "Main", "Maximized", "1", true, nullptr},
    {"[Main]\nLast Pa", "Main", "Last Path", "dflt", "Main", "Last Path", "/y", true,
     "[Main]\nLast Path=/y\nLast Pa\n"},
    {"[Ma", "Main", "K", "dflt", "Main", "K", "v", true, "[Ma\n\n[Main]\nK=v\n"},
    {"", "Main", "K", "dflt", "Main", "K", "v", true, "[Main]\nK=v\n"},
    {"[Main]\r\nA=1\r\n", "Main", "A", "1", "Main", "B", "2", true, "[Main]\r\nA=1\r\nB=2\r\n"},
    // What cannot be stored is refused and the file left alone.
    {"[Main]\nA=1\n", "Main", "A", "1", "Main", "A", "two\nlines", false, "[Main]\nA=1\n"},
    {"[Main]\nA=1\n", "Main", "A", "1", "Main", "a=b", "1", false, "[Main]\nA=1\n"},
    {"[Main]\nA=1\n", "Main", "A", "1", "Main", "[x", "1", false, "[Main]\nA=1\n"},
    {"[Main]\nA=1\n", "Main", "A", "1", "Main", "; x", "1", false, "[Main]\nA=1\n"},
    {"[Main]\nA=1\n", "Main", "A", "1", "Ma]in", "A", "1", false, "[Main]\nA=1\n"},
};

TEST_F(IniEngine, ReadsAndWritesKeepEveryOtherLine) {
    for (const EditCase& c : kEdits) {
        SCOPED_TRACE(std::string(c.section) + "/" + (c.key ? c.key : "-") + " on " + c.before);
        WriteText(Ini(), c.before);
        EXPECT_EQ(Read(c.readSection, c.readKey), c.read);
        const auto opt = [](const char* s) { return s ? std::optional<std::string_view>(s) : std::nullopt; };
        EXPECT_EQ(Write(c.section, opt(c.key), opt(c.value)), c.written);
        EXPECT_EQ(ReadText(Ini()), c.after ? std::string(c.after) : std::string(c.before) + "Maximized=1\n");
    }
    EXPECT_EQ(IniFile::FromText(kEdits[1].after).Keys("main"),
              (std::vector<std::string>{"Last Path", "Maximized", "Window Position"}));

    // Deleting what is not there succeeds and creates no file.
    const fs::path missing = root_ / "missing.ini";
    EXPECT_TRUE(WritePrivateProfileString("S", std::nullopt, std::nullopt, missing));
    EXPECT_TRUE(WritePrivateProfileString("S", "K", std::nullopt, missing));
    EXPECT_FALSE(fs::exists(missing));
}

TEST_F(IniEngine, ReadingTrimsBlanksAndOnePairOfMatchingQuotes) {
    const IniFile file = IniFile::FromText(
        "  [ Options ]  \n  Scale   =   Inches   \nQuoted = \"  spaced  \"\nSingle='x'\nMismatch=\"abc'\nEmpty=\n");
    const std::pair<const char*, std::optional<std::string>> cases[] = {
        {"  scale ", "Inches"}, {"Quoted", "  spaced  "}, {"Single", "x"},
        {"Mismatch", "\"abc'"}, {"Empty", ""},            {"Absent", std::nullopt}};
    for (const auto& [key, value] : cases) EXPECT_EQ(file.Get("options", key), value) << key;
    ASSERT_EQ(file.Pairs("OPTIONS").size(), 5u);
    EXPECT_EQ(file.Pairs("OPTIONS")[3], (std::pair<std::string, std::string>{"Mismatch", "\"abc'"}));
}

TEST_F(IniEngine, ReadsAreCutToTheBufferOf2048Characters) {
    const std::string longValue(3000, 'x');
    ASSERT_TRUE(Write("Main", "Long", longValue));
    EXPECT_EQ(Read("Main", "Long"), std::string(2047, 'x'));
    EXPECT_EQ(Read("Main", "Absent", longValue), std::string(2047, 'x'));
    EXPECT_EQ(IniFile::Load(Ini()).Get("Main", "Long"), longValue);  // the file keeps every character
    // A two-byte character straddling the limit is dropped whole.
    ASSERT_TRUE(Write("Main", "Accent", std::string(2046, 'a') + "\xC3\xA9"));
    EXPECT_EQ(Read("Main", "Accent"), std::string(2046, 'a'));
}

TEST_F(IniEngine, AFailedWriteNeverCreatesOrDamagesAFile) {
    // Tests run as root, so a folder without write permission would not stop the write.
    WriteText(root_ / "plain", "x");
    const fs::path underFile = root_ / "plain" / "settings.ini";
    EXPECT_FALSE(WritePrivateProfileString("Main", "A", "1", underFile));
    EXPECT_EQ(GetPrivateProfileString("Main", "A", "dflt", underFile), "dflt");
    EXPECT_EQ(ReadText(root_ / "plain"), "x");

    // A folder where the file should be reads as empty and is never replaced.
    fs::create_directory(Ini());
    EXPECT_EQ(Read("Main", "A"), "dflt");
    EXPECT_FALSE(Write("Main", "A", "1"));
    EXPECT_TRUE(fs::is_directory(Ini()));
}

// Stands in for a full disk: writes beyond the limit fail with EFBIG.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) {
        ::getrlimit(RLIMIT_FSIZE, &saved_);
        oldHandler_ = std::signal(SIGXFSZ, SIG_IGN);
        rlimit limit = saved_;
        limit.rlim_cur = bytes;
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &saved_);
        std::signal(SIGXFSZ, oldHandler_);
    }

private:
    rlimit saved_{};
    void (*oldHandler_)(int) = nullptr;
};

TEST_F(IniEngine, AWriteThatFailsHalfwayLeavesTheOldFileByteIdentical) {
    const std::string before = "[Main]\nLast Path=/home/photos\nMaximized=1\n";
    WriteText(Ini(), before);
    bool written;
    {
        // Nothing else may write meanwhile, not even a test report to a redirected output.
        FileSizeLimit limit(256);
        written = Write("Main", "Window Position", std::string(1000, '7'));
    }
    EXPECT_FALSE(written);
    EXPECT_EQ(ReadText(Ini()), before);
    for (const auto& entry : fs::directory_iterator(root_))
        EXPECT_NE(entry.path().filename().string().rfind(".quorbel-", 0), 0u) << "left behind: " << entry.path();
}

TEST_F(IniEngine, ThreadsWritingAtOnceLoseNoUpdate) {
    const auto name = [](char prefix, int n) { return prefix + std::to_string(n); };
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([&, t] {
            for (int i = 0; i < 10; ++i) Write(name('T', t), name('K', i), std::to_string(t * 100 + i));
        });
    for (std::thread& thread : threads) thread.join();
    const IniFile file = IniFile::Load(Ini());
    for (int t = 0; t < 4; ++t)
        for (int i = 0; i < 10; ++i) EXPECT_EQ(file.Get(name('T', t), name('K', i)), std::to_string(t * 100 + i));
}

}  // namespace
}  // namespace quorbel::test
