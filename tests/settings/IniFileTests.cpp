#include <sys/resource.h>

#include <csignal>
#include <thread>

#include "ShellFixture.h"
#include "settings/IniFile.h"
#include "settings/ProfileString.h"

namespace quorbel::test {
namespace {

namespace fs = std::filesystem;

class IniEngine : public ShellFixture {
protected:
    fs::path Ini() const { return root_ / "test.ini"; }

    bool Write(std::string_view section, std::optional<std::string_view> key,
               std::optional<std::string_view> value) {
        return WritePrivateProfileString(section, key, value, Ini());
    }
    std::string Read(std::string_view section, std::string_view key, std::string_view def = "dflt") {
        return GetPrivateProfileString(section, key, def, Ini());
    }
};

TEST_F(IniEngine, NamesIgnoreCaseAndEveryLineKeepsItsPlace) {
    WriteFile(Ini(),
              "[Main]\nLast Path=/home/a\nMaximized=0\n\n[Recent Files]\nFile 1=/p/one.jpg\n");

    EXPECT_TRUE(Write("MAIN", "last path", "/home/b"));
    EXPECT_TRUE(Write("main", "Window Position", "1,2,3,4"));
    EXPECT_TRUE(Write("Extra", "Key", "v"));

    EXPECT_EQ(ReadFile(Ini()),
              "[Main]\nLast Path=/home/b\nMaximized=0\nWindow Position=1,2,3,4\n\n"
              "[Recent Files]\nFile 1=/p/one.jpg\n\n[Extra]\nKey=v\n");
    EXPECT_EQ(Read("recent FILES", "FILE 1"), "/p/one.jpg");
    EXPECT_EQ(IniFile::Load(Ini()).Keys("main"),
              (std::vector<std::string>{"Last Path", "Maximized", "Window Position"}));
}

TEST_F(IniEngine, ReadingTrimsBlanksAndOnePairOfMatchingQuotes) {
    const IniFile file = IniFile::FromText(
        "  [ Options ]  \n  Scale   =   Inches   \nQuoted = \"  spaced  \"\nSingle='x'\n"
        "Mismatch=\"abc'\nEmpty=\n");
    EXPECT_EQ(file.Get("options", "  scale "), "Inches");
    EXPECT_EQ(file.Get("Options", "Quoted"), "  spaced  ");
    EXPECT_EQ(file.Get("Options", "Single"), "x");
    EXPECT_EQ(file.Get("Options", "Mismatch"), "\"abc'");
    EXPECT_EQ(file.Get("Options", "Empty"), "");
    EXPECT_EQ(file.Get("Options", "Absent"), std::nullopt);
    EXPECT_EQ(file.Pairs("OPTIONS").size(), 5u);
    EXPECT_EQ(file.Pairs("OPTIONS")[3], (std::pair<std::string, std::string>{"Mismatch", "\"abc'"}));
}

TEST_F(IniEngine, ReadsAreCutToTheBufferOf2048Characters) {
    const std::string longValue(3000, 'x');
    ASSERT_TRUE(Write("Main", "Long", longValue));
    EXPECT_EQ(Read("Main", "Long"), std::string(2047, 'x'));
    EXPECT_EQ(Read("Main", "Absent", longValue), std::string(2047, 'x'));
    // The file itself keeps every character.
    EXPECT_EQ(IniFile::Load(Ini()).Get("Main", "Long"), longValue);

    // A two-byte character straddling the limit is dropped whole.
    ASSERT_TRUE(Write("Main", "Accent", std::string(2046, 'a') + "\xC3\xA9"));
    EXPECT_EQ(Read("Main", "Accent"), std::string(2046, 'a'));
}

TEST_F(IniEngine, AbsentKeyDeletesTheSectionAndAbsentValueTheKey) {
    WriteFile(Ini(), "; top\n[Keep]\nA=1\n[Gone]\n; belongs to Gone\nB=2\n[Keep2]\nC=3\nD=4\n");
    EXPECT_TRUE(Write("GONE", std::nullopt, std::nullopt));
    EXPECT_TRUE(Write("Keep2", "c", std::nullopt));
    EXPECT_EQ(ReadFile(Ini()), "; top\n[Keep]\nA=1\n[Keep2]\nD=4\n");
    EXPECT_EQ(Read("Keep2", "C"), "dflt");

    // Deleting what is not there succeeds and creates no file.
    const fs::path missing = root_ / "missing.ini";
    EXPECT_TRUE(WritePrivateProfileString("S", std::nullopt, std::nullopt, missing));
    EXPECT_TRUE(WritePrivateProfileString("S", "K", std::nullopt, missing));
    EXPECT_FALSE(fs::exists(missing));
}

TEST_F(IniEngine, GarbageReadsAsDefaultsAndSurvivesAWrite) {
    const std::string garbage =
        "\x01\x02 binary junk\n[Main\nKey=before any section\n[Main]\nno equals sign here\n"
        "Last Path=/x\n";
    WriteFile(Ini(), garbage);
    EXPECT_EQ(Read("Main", "Last Path"), "/x");
    EXPECT_EQ(Read("Main", "Key"), "dflt");
    ASSERT_TRUE(Write("Main", "Maximized", "1"));
    EXPECT_EQ(ReadFile(Ini()), garbage + "Maximized=1\n");
}

TEST_F(IniEngine, TruncatedAndEmptyFilesReadAsDefaults) {
    WriteFile(Ini(), "[Main]\nLast Pa");
    EXPECT_EQ(Read("Main", "Last Path"), "dflt");
    ASSERT_TRUE(Write("Main", "Last Path", "/y"));
    EXPECT_EQ(ReadFile(Ini()), "[Main]\nLast Path=/y\nLast Pa\n");

    WriteFile(Ini(), "[Ma");
    EXPECT_EQ(Read("Main", "K"), "dflt");
    ASSERT_TRUE(Write("Main", "K", "v"));
    EXPECT_EQ(ReadFile(Ini()), "[Ma\n\n[Main]\nK=v\n");

    WriteFile(Ini(), "");
    EXPECT_EQ(Read("Main", "K"), "dflt");
    ASSERT_TRUE(Write("Main", "K", "v"));
    EXPECT_EQ(ReadFile(Ini()), "[Main]\nK=v\n");
}

TEST_F(IniEngine, KeepsWindowsLineEndings) {
    WriteFile(Ini(), "[Main]\r\nA=1\r\n");
    EXPECT_EQ(Read("Main", "A"), "1");
    ASSERT_TRUE(Write("Main", "B", "2"));
    EXPECT_EQ(ReadFile(Ini()), "[Main]\r\nA=1\r\nB=2\r\n");
}

TEST_F(IniEngine, AWriteThatCannotBeStoredLeavesTheFileAlone) {
    const std::string before = "[Main]\nA=1\n";
    WriteFile(Ini(), before);
    EXPECT_FALSE(Write("Main", "A", "two\nlines"));
    EXPECT_FALSE(Write("Main", "a=b", "1"));
    EXPECT_FALSE(Write("Main", "[x", "1"));
    EXPECT_FALSE(Write("Main", "; x", "1"));
    EXPECT_FALSE(Write("Ma]in", "A", "1"));
    EXPECT_EQ(ReadFile(Ini()), before);
}

TEST_F(IniEngine, AFailedWriteNeverCreatesOrDamagesAFile) {
    // Tests run as root, so a folder without write permission would not stop the write.
    WriteFile(root_ / "plain", "x");
    const fs::path underFile = root_ / "plain" / "settings.ini";
    EXPECT_FALSE(WritePrivateProfileString("Main", "A", "1", underFile));
    EXPECT_EQ(GetPrivateProfileString("Main", "A", "dflt", underFile), "dflt");
    EXPECT_EQ(ReadFile(root_ / "plain"), "x");

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
    WriteFile(Ini(), before);
    bool written;
    {
        // Nothing else may write meanwhile, not even a test report to a redirected output.
        FileSizeLimit limit(256);
        written = Write("Main", "Window Position", std::string(1000, '7'));
    }
    EXPECT_FALSE(written);
    EXPECT_EQ(ReadFile(Ini()), before);
    for (const auto& entry : fs::directory_iterator(root_))
        EXPECT_EQ(entry.path().filename().string().rfind(".quorbel-", 0), std::string::npos)
            << "temporary file left behind: " << entry.path();
}

std::string Numbered(char prefix, int number) {
    std::string name(1, prefix);
    return name.append(std::to_string(number));
}

TEST_F(IniEngine, ThreadsWritingAtOnceLoseNoUpdate) {
    constexpr int kThreads = 4;
    constexpr int kWrites = 10;
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t)
        threads.emplace_back([this, t] {
            for (int i = 0; i < kWrites; ++i)
                Write(Numbered('T', t), Numbered('K', i), std::to_string(t * 100 + i));
        });
    for (std::thread& thread : threads) thread.join();

    const IniFile file = IniFile::Load(Ini());
    for (int t = 0; t < kThreads; ++t)
        for (int i = 0; i < kWrites; ++i)
            EXPECT_EQ(file.Get(Numbered('T', t), Numbered('K', i)),
                      std::to_string(t * 100 + i));
}

}  // namespace
}  // namespace quorbel::test
