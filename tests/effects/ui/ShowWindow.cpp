// Opens one of the effect windows on a photo and saves a picture of it, for looking at the
// windows by hand (under xvfb-run, or on a desktop):
//   effects_ui_show filter|bright|contrast|colorbal|warp|fish PHOTO OUT.png [ENTRY [VALUE...]]
// ENTRY is the filter list index or the warp list index; VALUEs go to the sliders in turn.
// With QUORBEL_SHOW_RUN=MS set, Apply (or OK) is pressed and the picture taken MS later;
// with QUORBEL_SHOW_ACTUAL set, the filter window previews the middle at actual size.
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QImage>
#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "effects/ui/SliderRow.h"
#include "effects/ui/fFilter.h"
#include "effects/ui/frmBright.h"
#include "effects/ui/frmColorBal.h"
#include "effects/ui/frmContrast.h"
#include "effects/ui/frmFish.h"
#include "effects/ui/frmWarp.h"

using namespace quorbel;

namespace {

cDib Load(const char* path) {
    const QImage image = QImage(QString::fromLocal8Bit(path)).convertToFormat(QImage::Format_RGB32);
    cDib picture;
    if (image.isNull() || !picture.Create(image.width(), image.height())) return picture;
    for (int y = 0; y < image.height(); ++y)
        std::memcpy(picture.Row(y), image.constScanLine(y), static_cast<size_t>(image.width()) * 4);
    return picture;
}

}  // namespace

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    if (argc < 4) {
        std::fprintf(stderr, "usage: %s WINDOW PHOTO OUT.png [ENTRY [VALUE...]]\n", argv[0]);
        return 2;
    }
    const std::string kind = argv[1];
    const cDib picture = Load(argv[2]);
    if (!picture.hDIB()) {
        std::fprintf(stderr, "cannot read %s\n", argv[2]);
        return 1;
    }
    const int entry = argc > 4 ? std::atoi(argv[4]) : -1;
    std::vector<int> values;
    for (int i = 5; i < argc; ++i) values.push_back(std::atoi(argv[i]));

    ScriptedMessageBox messages;
    std::unique_ptr<QDialog> window;
    std::vector<SliderRow*> sliders;
    if (kind == "filter") {
        auto* w = new fFilter(picture, argv[2], messages);
        if (entry >= 0) w->SelectFilter(entry);
        if (std::getenv("QUORBEL_SHOW_ACTUAL")) w->chkActualSize->setChecked(true);
        sliders.assign(w->sbParam.begin(), w->sbParam.end());
        window.reset(w);
    } else if (kind == "bright") {
        auto* w = new frmBright(picture);
        sliders = {w->hbarBrightness};
        window.reset(w);
    } else if (kind == "contrast") {
        auto* w = new frmContrast(picture);
        sliders = {w->hbarContrast};
        window.reset(w);
    } else if (kind == "colorbal") {
        auto* w = new frmColorBal(picture);
        sliders.assign(w->hbarBrightness.begin(), w->hbarBrightness.end());
        window.reset(w);
    } else if (kind == "warp") {
        auto* w = new frmWarp(picture);
        if (entry >= 0) w->cboTransformation->setCurrentIndex(entry);
        window.reset(w);
    } else if (kind == "fish") {
        window.reset(new frmFish(picture));
    } else {
        std::fprintf(stderr, "unknown window %s\n", kind.c_str());
        return 2;
    }
    for (size_t i = 0; i < values.size() && i < sliders.size(); ++i) sliders[i]->SetValue(values[i]);
    window->show();
    int delay = 800;
    if (const char* run = std::getenv("QUORBEL_SHOW_RUN")) {
        delay = std::atoi(run);
        QTimer::singleShot(0, [&] {
            if (auto* f = qobject_cast<fFilter*>(window.get())) f->Apply();
            else window->accept();
        });
    }
    const QString out = QString::fromLocal8Bit(argv[3]);
    QTimer::singleShot(delay, [&] {
        window->grab().save(out);
        std::printf("%dx%d\n", window->width(), window->height());
        app.quit();
    });
    return QApplication::exec();
}
