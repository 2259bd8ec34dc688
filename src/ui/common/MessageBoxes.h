#pragma once

#include <QMessageBox>
#include <QString>

#include <functional>
#include <memory>

class QWidget;

namespace zentoria {

// The program's messages to the user: modal, one OK button, no icon, titled "Zentoria", plain text.
// Tests install an answerer that reads each message instead of showing it.
class MessageBoxes {
public:
    using Answerer = std::function<void(const QString& text)>;
    // Answers a yes-or-no question instead of the user.
    using Questioner = std::function<bool(const QString& text)>;
    // Answers a question with more than two buttons instead of the user: one of the buttons offered.
    using Chooser =
        std::function<QMessageBox::StandardButton(const QString& text, QMessageBox::StandardButtons offered)>;

    // Shows the message and returns once it is dismissed. Details (a long list) are one click away,
    // behind the box's "Show Details…" button.
    void show(QWidget* parent, const QString& text, const QString& details = {});
    // The same under a title of its own (the file the message is about) instead of "Zentoria".
    void showTitled(QWidget* parent, const QString& title, const QString& text);
    // Asks with Yes and No buttons, No the default; true for Yes. With an answerer installed and no
    // questioner, the answerer reads the question and the answer is No, which changes nothing.
    bool ask(QWidget* parent, const QString& text, const QString& details = {});
    // Asks whether to save what would otherwise be lost: Save (the default), Discard or Cancel (also
    // Escape). With an answerer installed and no chooser, the answerer reads the question and the
    // answer is Cancel, which loses nothing.
    QMessageBox::StandardButton askToSave(QWidget* parent, const QString& text);
    void setAnswerer(Answerer answerer) { m_answerer = std::move(answerer); }
    void setChooser(Chooser chooser) { m_chooser = std::move(chooser); }
    void setQuestioner(Questioner questioner) { m_questioner = std::move(questioner); }
    // Runs before every message, answered or shown: start-up closes its splash there, so that nothing
    // stands in front of the message.
    void setBeforeShowing(std::function<void()> before) { m_before = std::move(before); }
    // The details of the last message shown.
    const QString& lastDetails() const { return m_lastDetails; }
    // The window title of the last message shown.
    const QString& lastTitle() const { return m_lastTitle; }

    // The box show() would run, built but not shown; centred on the parent's screen while the parent
    // is not shown yet, and wide enough for its title.
    static std::unique_ptr<QMessageBox> create(QWidget* parent, const QString& text,
                                               const QString& title = QStringLiteral("Zentoria"));
    // The box askToSave() would run: its buttons carry access keys in the language file's words.
    static std::unique_ptr<QMessageBox> createSaveQuestion(QWidget* parent, const QString& text);

private:
    static void keepOnScreen(QMessageBox& box, const QString& text, const QString& details);
    void beforeShowing() const;
    void present(QWidget* parent, const QString& title, const QString& text, const QString& details);

    Answerer m_answerer;
    Questioner m_questioner;
    Chooser m_chooser;
    std::function<void()> m_before;
    QString m_lastDetails;
    QString m_lastTitle;
};

} // namespace zentoria
