#include "share/SlideShow.h"

#include "ShareFixture.h"

namespace quorbel {
namespace fs = std::filesystem;

class SlideShowTest : public ShareTest {
protected:
    void SetUp() override {
        ShareTest::SetUp();
        templates_ = dir_ / "data";
        target_ = dir_ / "out";
        Write(templates_ / "DHTML1.txt", "<one>");
        Write(templates_ / "DHTML2.txt", "<two>");
        Write(templates_ / "DHTML3.txt", "<three>");
        Write(templates_ / "slideshow.js", "script();");
        fs::create_directory(target_);
    }
    fs::path templates_, target_;
};

TEST_F(SlideShowTest, PageIsTheTemplatesAroundTheOptionList) {
    std::vector<fs::path> outputs{target_ / "a.jpg"};
    ASSERT_FALSE(WriteSlideShow(target_, templates_, {{"a.jpg", "Beach"}, {"  b.jpg ", ""}}, outputs));
    EXPECT_EQ(Slurp(target_ / "slideshow.htm"),
              "<one><two> <option value ='a.jpg'>Beach</option> <option value ='b.jpg'></option><three>");
    EXPECT_EQ(Slurp(target_ / "SlideShow.js"), "script();");
    EXPECT_EQ(outputs, (std::vector<fs::path>{target_ / "a.jpg", target_ / "slideshow.htm", target_ / "SlideShow.js"}));
}

TEST_F(SlideShowTest, MissingPartsAreLeftOut) {
    fs::remove(templates_ / "DHTML2.txt");
    fs::remove(templates_ / "slideshow.js");
    std::vector<fs::path> outputs;
    ASSERT_FALSE(WriteSlideShow(target_, templates_, {{"a.jpg", ""}}, outputs));
    EXPECT_EQ(Slurp(target_ / "slideshow.htm"), "<one> <option value ='a.jpg'></option><three>");
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
    EXPECT_FALSE(OpenPageInBrowser(page, dir_, desktop_, messages_));
    EXPECT_EQ(desktop_.probeSeen, "<HTML> <\\HTML>\n");
    EXPECT_TRUE(desktop_.opened.empty());
    desktop_.browser = "chromium.desktop";
    desktop_.opens = false;
    EXPECT_FALSE(OpenPageInBrowser(page, dir_, desktop_, messages_));
    desktop_.opens = true;
    EXPECT_TRUE(OpenPageInBrowser(page, dir_, desktop_, messages_));

    ASSERT_EQ(messages_.Shown().size(), 2u);
    EXPECT_EQ(messages_.Shown()[0].text + "|" + messages_.Shown()[0].title, "Could not find associated Browser|Browser Not Found");
    EXPECT_EQ(messages_.Shown()[1].text + "|" + messages_.Shown()[1].title, "Web Page not Opened|URL Failed");
    EXPECT_EQ(messages_.Shown()[1].icon, MsgIcon::Exclamation);
    EXPECT_EQ(desktop_.opened.back(), "file://" + page.string());
    EXPECT_FALSE(fs::exists(desktop_.probe));
}

}  // namespace quorbel
