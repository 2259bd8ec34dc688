#pragma once

#include <QWidget>

class QGroupBox;
class QPushButton;
class QTimer;

namespace zentoria {

class CaptionLabel;
class frmMain;

// The start-up splash: a borderless picture with the program's version, shown while the main window
// is built and a report read. Its closing (by its timer, Escape, or its Ok button, which has the
// keyboard focus though it lies below the visible part) puts the main window where the user left it
// and shows it. It closes for good: it deletes itself.
class frmSplash : public QWidget {
    Q_OBJECT

public:
    explicit frmSplash(frmMain* main);

    // Sizes the window, writes the version, centres it on the screen the main window will open on and
    // shows it without waiting. Called once, with Caller false, by the start-up.
    void ShowSplash(bool Caller);

    // Closes the splash 500 ms after start-up arms it.
    QTimer* CloseIt = nullptr;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void createControls();
    void Form_Load();
    void lblProgress_Change();
    void showMainWindow();

    frmMain* m_main;
    // Closed once only: a message at start-up may close it before its timer or Escape does.
    bool m_closed = false;
    CaptionLabel* LabVers[2] = {nullptr, nullptr};
    CaptionLabel* lblProgress = nullptr;
    CaptionLabel* lblProgrammed = nullptr;
    CaptionLabel* lblMail = nullptr;
    CaptionLabel* lblICQ = nullptr;
    QPushButton* cmdHistory = nullptr;
    QPushButton* cmdOk = nullptr;
    QGroupBox* frmTranslation = nullptr;
    CaptionLabel* lblTranslatedBy = nullptr;
    CaptionLabel* lblTranslator = nullptr;
};

} // namespace zentoria
