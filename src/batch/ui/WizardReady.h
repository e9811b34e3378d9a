#pragma once
// The last step before the run: what the job is about to do, and what happens afterwards.
#include <QWidget>
#include <string>

class QLabel;
class QRadioButton;

namespace quorbel {

struct BatchJob;

class WizardReady : public QWidget {
    Q_OBJECT
public:
    explicit WizardReady(const std::string& jobWord);
    void Fill(BatchJob& job) const;

private:
    QLabel* lblReady;
    QRadioButton* optOpenWinExplr;
    QRadioButton* optOpenQorbix;
    QRadioButton* optOpenNo;
};

}  // namespace quorbel
