#pragma once

#include <QDialog>

class QLineEdit;

namespace zentoria {

// Asks for the text that Edit > Select Matching looks for in the list's paths.
class SelectMatchingDialog : public QDialog {
    Q_OBJECT

public:
    explicit SelectMatchingDialog(const QString& lastPattern, QWidget* parent = nullptr);

    QString pattern() const;

private:
    QLineEdit* txtPattern;
};

} // namespace zentoria
