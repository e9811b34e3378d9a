#pragma once
// The wizard's first step: what the job does, and for a disc job where its pictures go.
#include <QWidget>
#include <string>

class QComboBox;
class QLabel;

namespace quorbel {

class WizardWelcome : public QWidget {
    Q_OBJECT
public:
    explicit WizardWelcome(const std::string& jobWord);
    // The destination as chosen ("Folder" unless a disc job says otherwise).
    std::string Destination() const;
    // The job writes into a folder of the program's own (a mail, or a disc).
    bool OwnTarget() const;

private:
    std::string jobWord_;
    QLabel* lblWelcome;
    QComboBox* cboselection;
};

}  // namespace quorbel
