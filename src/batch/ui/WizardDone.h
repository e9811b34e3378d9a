#pragma once
// The completion page of the "Web" and "Email" jobs: what was made and what to do with it.
#include <QWidget>
#include <string>

class QLabel;
class QPushButton;

namespace quorbel {

class WizardDone : public QWidget {
    Q_OBJECT
public:
    WizardDone();
    // Fills the page for the job type; false when the job has no completion page.
    bool ShowFor(const std::string& jobType);

signals:
    void viewShowPressed();

private:
    QLabel* lblDoneHeading;
    QLabel* lblDoneText;
    QPushButton* btnViewShow;
};

}  // namespace quorbel
