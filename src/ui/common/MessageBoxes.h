#pragma once

#include <QString>

#include <functional>
#include <memory>

class QMessageBox;
class QWidget;

namespace zentoria {

// The program's messages to the user: modal, one OK button, no icon, titled "Zentoria", plain text.
// Tests install an answerer that reads each message instead of showing it.
class MessageBoxes {
public:
    using Answerer = std::function<void(const QString& text)>;

    // Shows the message and returns once it is dismissed.
    void show(QWidget* parent, const QString& text);
    void setAnswerer(Answerer answerer) { m_answerer = std::move(answerer); }

    // The box show() would run, built but not shown; centred on the parent's screen while the parent
    // is not shown yet.
    static std::unique_ptr<QMessageBox> create(QWidget* parent, const QString& text);

private:
    Answerer m_answerer;
};

} // namespace zentoria
