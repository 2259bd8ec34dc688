#include "MessageBoxes.h"

#include "settings/Texts.h"

#include <QGridLayout>
#include <QGuiApplication>
#include <QLayout>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>

#include <algorithm>

namespace zentoria {

namespace {

// Pixels a title bar gives its frame's icon and buttons, beside the title.
constexpr int kTitleBarRoom = 160;

} // namespace

std::unique_ptr<QMessageBox> MessageBoxes::create(QWidget* parent, const QString& text,
                                                  const QString& title) {
    auto box = std::make_unique<QMessageBox>(QMessageBox::NoIcon, title, text, QMessageBox::Ok, parent);
    // Messages can carry file names, which are data, never markup.
    box->setTextFormat(Qt::PlainText);
    // A box sizes itself to its text: a short text under a file's name would cut the title to "jun… oria".
    // The frame's icon and buttons share the title bar, hence the room beside the text.
    const QScreen* screen = parent ? parent->screen() : QGuiApplication::primaryScreen();
    const int titleWidth = std::min(box->fontMetrics().horizontalAdvance(title) + kTitleBarRoom,
                                    screen ? screen->availableGeometry().width() * 9 / 10 : 640);
    // Across every column of the box's grid: in the first alone it would push the text aside.
    if (auto* grid = qobject_cast<QGridLayout*>(box->layout())) {
        grid->addItem(new QSpacerItem(titleWidth, 0, QSizePolicy::Minimum, QSizePolicy::Fixed),
                      grid->rowCount(), 0, 1, grid->columnCount());
    }
    // Before the window is shown (a report that fails at start-up) it has no place to centre on yet:
    // the message goes to the middle of the screen the window will open on, not to a corner.
    if (parent && !parent->isVisible() && screen) {
        box->adjustSize();
        QRect frame = box->frameGeometry();
        frame.moveCenter(screen->availableGeometry().center());
        box->move(frame.topLeft());
    }
    return box;
}

void MessageBoxes::keepOnScreen(QMessageBox& box, const QString& text, const QString& details) {
    // A message of more lines than half its screen shows as many, and the rest one click away with
    // the details, so that its buttons stay on the screen.
    const QScreen* screen = box.parentWidget() ? box.parentWidget()->screen() : box.screen();
    const QStringList lines = text.split(u'\n');
    if (!screen || box.sizeHint().height() <= screen->availableGeometry().height() * 2 / 3) {
        return;
    }
    const int fit = screen->availableGeometry().height() / 2 / qMax(1, box.fontMetrics().lineSpacing() * 2);
    const qsizetype keep = qBound(qsizetype(1), qsizetype(fit), lines.size());
    box.setText(lines.first(keep).join(u'\n'));
    const QString rest = lines.sliced(keep).join(u'\n');
    box.setDetailedText(details.isEmpty() ? rest
                        : rest.isEmpty()  ? details
                                          : rest + QStringLiteral("\n\n") + details);
}

void MessageBoxes::beforeShowing() const {
    if (m_before) {
        m_before();
    }
}

void MessageBoxes::show(QWidget* parent, const QString& text, const QString& details) {
    present(parent, QStringLiteral("Zentoria"), text, details);
}

void MessageBoxes::showTitled(QWidget* parent, const QString& title, const QString& text) {
    present(parent, title, text, {});
}

void MessageBoxes::present(QWidget* parent, const QString& title, const QString& text,
                           const QString& details) {
    beforeShowing();
    m_lastDetails = details;
    m_lastTitle = title;
    if (m_answerer) {
        m_answerer(text);
        return;
    }
    const std::unique_ptr<QMessageBox> box = create(parent, text, title);
    box->setDetailedText(details);
    keepOnScreen(*box, text, details);
    box->exec();
}

bool MessageBoxes::ask(QWidget* parent, const QString& text, const QString& details) {
    beforeShowing();
    m_lastDetails = details;
    if (m_questioner) {
        return m_questioner(text);
    }
    if (m_answerer) {
        m_answerer(text);
        return false;
    }
    const std::unique_ptr<QMessageBox> box = create(parent, text);
    box->setDetailedText(details);
    box->setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    box->setDefaultButton(QMessageBox::No);
    return box->exec() == QMessageBox::Yes;
}

QMessageBox::StandardButton MessageBoxes::askToSave(QWidget* parent, const QString& text) {
    beforeShowing();
    const QMessageBox::StandardButtons offered =
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel;
    if (m_chooser) {
        const QMessageBox::StandardButton answer = m_chooser(text, offered);
        return offered.testFlag(answer) ? answer : QMessageBox::Cancel;
    }
    if (m_answerer) {
        m_answerer(text);
        return QMessageBox::Cancel;
    }
    return QMessageBox::StandardButton(createSaveQuestion(parent, text)->exec());
}

std::unique_ptr<QMessageBox> MessageBoxes::createSaveQuestion(QWidget* parent, const QString& text) {
    std::unique_ptr<QMessageBox> box = create(parent, text);
    box->setStandardButtons(QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
    box->setDefaultButton(QMessageBox::Save);
    box->setEscapeButton(QMessageBox::Cancel);
    box->button(QMessageBox::Save)->setText(uiText(txt::SaveButton));
    box->button(QMessageBox::Discard)->setText(uiText(txt::DiscardButton));
    box->button(QMessageBox::Cancel)->setText(uiText(txt::CancelButton));
    return box;
}

} // namespace zentoria
