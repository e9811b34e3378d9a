#pragma once
// fFilter, the filter window: the filter list with the sliders and colour pickers each
// entry shows (all read from FilterList.h), a preview of a small copy, Apply on the whole
// working copy off the UI thread, and Close, which hands back what was applied.
#include <QDialog>
#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "core/MessageBox.h"
#include "effects/FilterList.h"
#include "effects/ui/PictureJob.h"
#include "imaging/cDib.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QTimer;

namespace quorbel {

class ColourPicker;
class PreviewBox;
class SliderRow;

// Filters refuse pictures whose file has the extension "tif" (any case).
bool IsTifFile(std::string_view fileName);

class fFilter : public QDialog {
    Q_OBJECT
public:
    // picture must outlive the window; fileName is the current file's, for the TIFF refusal.
    fFilter(const cDib& picture, std::string fileName, MessageBox& messages, QWidget* parent = nullptr);
    ~fFilter() override;

    // Chooses list entry index, which sets its sliders and colour pickers.
    void SelectFilter(int index);
    int FilterIndex() const;
    FilterSettings Settings() const;

    bool Busy() const { return job_.Running(); }
    // True once an Apply has changed the working copy; TakeResult hands it over.
    bool Applied() const { return applied_; }
    cDib TakeResult();

    // The window's controls.
    QComboBox* cbFilter;
    std::array<SliderRow*, 3> sbParam;
    std::array<ColourPicker*, 2> lblColor;
    PreviewBox* picPreview;
    QCheckBox* chkActualSize;  // the preview shows the middle pixel for pixel
    QLabel* lblHint;
    QProgressBar* prgApply;
    QPushButton* cmdPreview;
    QPushButton* cmdApply;
    QPushButton* cmdClose;

signals:
    // An Apply ended: changed the working copy, or not (refused, cancelled, failed).
    void applyFinished(bool applied);

public slots:
    void Preview();
    void Apply();
    void reject() override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void OnFilterChosen(int index);
    void OnPicked(QPoint pixel, Qt::MouseButton button);
    void OnApplyFinished(bool done);
    void SetBusy(bool busy);
    void MakePreviewSource();
    const cDib& Current() const { return applied_ ? working_ : picture_; }

    const cDib& picture_;
    std::string fileName_;
    MessageBox& messages_;
    cDib working_;        // the picture after every Apply so far; empty before the first
    bool applied_ = false;
    bool closeWhenDone_ = false;
    cDib previewSource_;  // the current picture shrunk, or its middle at full scale
    QTimer* previewTimer_;
    QWidget* side_;
    bool sideSized_ = false;
    PictureJob job_;      // declared last: it stops before the pictures it reads go
};

// Opens the filter window on picture, with list entry initialFilter chosen, and returns
// the changed picture when at least one Apply went through.
std::optional<cDib> RunFilterDialog(QWidget* parent, const cDib& picture, const std::string& fileName,
                                    MessageBox& messages, int initialFilter = 0);

}  // namespace quorbel
