#include "share/SlideShow.h"

#include "ShareFixture.h"

namespace quorbel::test {
namespace {

class SlideShowTest : public ShareTest {
protected:
    void SetUp() override {
        for (auto [name, text] : {std::pair{"DHTML1.txt", "<one>"}, {"DHTML2.txt", "<two>"}, {"DHTML3.txt", "<three>"},
                                  {"slideshow.js", "script();"}})
            WriteText(templates_ / name, text);
        fs::create_directory(target_);
    }
    const fs::path templates_ = dir_ / "data", target_ = dir_ / "out";
};

TEST_F(SlideShowTest, PageIsTheTemplatesAroundTheOptionListAndMissingPartsAreLeftOut) {
    std::vector<fs::path> outputs{target_ / "a.jpg"};
    ASSERT_FALSE(WriteSlideShow(target_, templates_, {{"a.jpg", "Beach"}, {"  b.jpg ", ""}}, outputs));
    EXPECT_EQ(ReadText(target_ / "slideshow.htm"),
              "<one><two> <option value ='a.jpg'>Beach</option> <option value ='b.jpg'></option><three>");
    EXPECT_EQ(ReadText(target_ / "SlideShow.js"), "script();");
    EXPECT_EQ(outputs, (std::vector<fs::path>{target_ / "a.jpg", target_ / "slideshow.htm", target_ / "SlideShow.js"}));

    fs::remove(templates_ / "DHTML2.txt");
    fs::remove(templates_ / "slideshow.js");
    fs::remove(target_ / "SlideShow.js");
    outputs.clear();
    ASSERT_FALSE(WriteSlideShow(target_, templates_, {{"a.jpg", ""}}, outputs));
    EXPECT_EQ(ReadText(target_ / "slideshow.htm"), "<one> <option value ='a.jpg'></option><three>");
    EXPECT_EQ(outputs, std::vector<fs::path>{target_ / "slideshow.htm"});
    // A folder that cannot be written gets nothing, not even half a page.
    EXPECT_TRUE(WriteSlideShow(dir_ / "gone", templates_, {}, outputs));
    EXPECT_EQ(outputs.size(), 1u);
}

TEST_F(SlideShowTest, NamesAndCaptionsCannotBreakThePage) {
    EXPECT_EQ(SlideShowOptions({{"it's <1> & \"2\".jpg", "</option><script>x()</script>"}, {"Ürün.jpg", "Çay"}}),
              " <option value ='it&#39;s &lt;1&gt; &amp; &quot;2&quot;.jpg'>&lt;/option&gt;&lt;script&gt;x()&lt;/script&gt;"
              "</option> <option value ='Ürün.jpg'>Çay</option>");
}

TEST_F(SlideShowTest, BrowserMessagesAndTheThrowAwayFile) {
    const fs::path page = target_ / "slideshow.htm";
    desktop_.probe = dir_ / "temphtm.HTM";
    desktop_.browser = " ";
    EXPECT_FALSE(OpenPageInBrowser(page, dir_.path, desktop_, messages_));
    EXPECT_EQ(desktop_.probeSeen, "<HTML> <\\HTML>\n");
    EXPECT_TRUE(desktop_.opened.empty());
    desktop_.browser = "chromium.desktop";
    desktop_.opens = false;
    EXPECT_FALSE(OpenPageInBrowser(page, dir_.path, desktop_, messages_));
    desktop_.opens = true;
    EXPECT_TRUE(OpenPageInBrowser(page, dir_.path, desktop_, messages_));

    ASSERT_EQ(messages_.Shown().size(), 2u);
    EXPECT_EQ(messages_.Shown()[0].text + "|" + messages_.Shown()[0].title, "Could not find associated Browser|Browser Not Found");
    EXPECT_EQ(messages_.Shown()[1].text + "|" + messages_.Shown()[1].title, "Web Page not Opened|URL Failed");
    EXPECT_EQ(messages_.Shown()[1].icon, MsgIcon::Exclamation);
    EXPECT_EQ(desktop_.opened.back(), "file://" + page.string());
    EXPECT_FALSE(fs::exists(desktop_.probe));
}

}  // namespace
}  // namespace quorbel::test
