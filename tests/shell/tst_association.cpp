#include "TestData.h"
#include "Version.h"
#include "app/Startup.h"
#include "shell/FileAssociation.h"
#include "ui/main/frmMain.h"

#include <QDateTime>
#include <QMimeDatabase>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>

using namespace zentoria;

namespace {

const FileType kReport{".vzt", "application/x-melvadex-integrity-report", "Melvadex Integrity Report",
                       "application-x-melvadex-integrity-report"};
const QString kAppId = QStringLiteral(ZENTORIA_APP_ID);

// The arguments of a desktop entry's Exec line: the escapes of a string value undone first, then the
// quoting of arguments, which is the shell's double quoting, then the field codes (%% a percent sign).
QStringList execArguments(const QByteArray& entry) {
    const QString value = QRegularExpression("^Exec=(.*)$", QRegularExpression::MultilineOption)
                              .match(QString::fromUtf8(entry))
                              .captured(1);
    QString unescaped;
    for (qsizetype i = 0; i < value.size(); ++i) {
        const qsizetype escape = QStringLiteral("sntr\\").indexOf(value.mid(i + 1, 1));
        if (value[i] == u'\\' && escape >= 0 && i + 1 < value.size()) {
            unescaped += QStringLiteral(" \n\t\r\\")[escape];
            ++i;
        } else {
            unescaped += value[i];
        }
    }
    QProcess shell;
    shell.start(QStringLiteral("sh"), {QStringLiteral("-c"), QStringLiteral("printf '%s\\0' ") + unescaped});
    shell.waitForFinished();
    QStringList arguments =
        QString::fromUtf8(shell.readAllStandardOutput()).split(QChar(0), Qt::SkipEmptyParts);
    for (QString& argument : arguments) {
        if (argument != QLatin1StringView("%f")) {
            argument.replace(QStringLiteral("%%"), QStringLiteral("%"));
        }
    }
    return arguments;
}

} // namespace

class tst_Association : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        m_home = std::make_unique<QTemporaryDir>();
        qputenv("XDG_DATA_HOME", data().toLocal8Bit());
        qputenv("XDG_CONFIG_HOME", config().toLocal8Bit());
    }

    void execArgument_data() {
        QTest::addColumn<QString>("executable");

        addRow("plain", "/usr/bin/zentoria");
        addRow("blanks", "/home/ann/My Programs/zentoria");
        addRow("everything", "/tmp/a b\"c'd$e`f%g\\h;i&j|k<l>m*n?o#p(q)~r\tt/zentoria");
    }

    void execArgument() {
        QFETCH(QString, executable);
        QCOMPARE(execArguments(desktopEntry(kReport, {kAppId, executable})), (QStringList{executable, "%f"}));
    }

    void registers() {
        const QByteArray others = "[Added Associations]\r\ntext/plain=gedit.desktop;\r\n\r\n"
                                  "[Default Applications]\ntext/plain=gedit.desktop;\n";
        QVERIFY(writeFile(config() + "/mimeapps.list", others));

        const QString executable = QCoreApplication::applicationFilePath();
        const AssociationResult result = SetAssociation(kReport, {kAppId, executable});
        QVERIFY(result.toolsStarted.contains("update-mime-database"));
        const QString entry = data() + "/applications/" + kAppId + ".desktop";
        QCOMPARE(execArguments(contentsOf(entry)), (QStringList{executable, "%f"}));
        // Every other line of the user's list stays as it was.
        QCOMPARE(contentsOf(config() + "/mimeapps.list"),
                 "[Added Associations]\r\ntext/plain=gedit.desktop;\r\n\r\n[Default Applications]\n"
                 "application/x-melvadex-integrity-report=org.melvadex.Zentoria.desktop;\ntext/"
                 "plain=gedit.desktop;\n");
        for (const char* icon :
             {"icons/hicolor/scalable/mimetypes/application-x-melvadex-integrity-report.svg",
              "icons/hicolor/48x48/apps/org.melvadex.Zentoria.png"}) {
            QVERIFY2(QFileInfo(data() + '/' + icon).size() > 0, icon);
        }

        // The desktop reads the type from the database its tool has just updated.
        QTRY_VERIFY_WITH_TIMEOUT(QFileInfo(data() + "/mime/mime.cache").exists(), 10000);
        const QMimeDatabase types;
        QCOMPARE(types.mimeTypeForFile("x.vzt", QMimeDatabase::MatchExtension).name(), kReport.mimeType);
        QCOMPARE(types.mimeTypeForName(kReport.mimeType).comment(), kReport.description);
        QCOMPARE(types.mimeTypeForName(kReport.mimeType).iconName(), kReport.iconName);
        QVERIFY(types.mimeTypeForFile("old.txt", QMimeDatabase::MatchExtension).name() != kReport.mimeType);
        if (!QStandardPaths::findExecutable("gtk-update-icon-cache").isEmpty()) {
            QTRY_VERIFY_WITH_TIMEOUT(QFileInfo(data() + "/icons/hicolor/icon-theme.cache").exists(), 10000);
        }

        // Everything in place: a second start writes nothing and starts nothing.
        QFile file(entry);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(
            file.setFileTime(QDateTime(QDate(2001, 1, 1), QTime(0, 0)), QFileDevice::FileModificationTime));
        file.close();
        const AssociationResult again = SetAssociation(kReport, {kAppId, executable});
        QCOMPARE(again.written + again.toolsStarted, QStringList());
        QCOMPARE(QFileInfo(entry).lastModified().date().year(), 2001);

        // A program moved to another folder: its command is written again, nothing else.
        const AssociationResult moved = SetAssociation(kReport, {kAppId, "/home/ann/Zentoria/zentoria"});
        QCOMPARE(moved.written, QStringList{entry});
        QCOMPARE(execArguments(contentsOf(entry)).first(), QStringLiteral("/home/ann/Zentoria/zentoria"));
        QVERIFY(!moved.toolsStarted.contains("update-mime-database"));
    }

    void unwritableFoldersLetStartUpFinish() {
        // Folders under a plain file can never be made, whoever runs the test (root ignores permissions).
        const QString blocker = m_home->filePath("not-a-folder");
        QVERIFY(writeFile(blocker, {}));
        qputenv("XDG_DATA_HOME", QFile::encodeName(blocker + "/data"));
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(blocker + "/config"));
        const AssociationResult result = SetAssociation(kReport, {kAppId, "/usr/bin/zentoria"});
        QCOMPARE(result.written + result.toolsStarted, QStringList());

        const std::unique_ptr<frmMain> window = Main({"zentoria"});
        QVERIFY(window && window->findChild<QWidget*>("frmSplash"));
    }

    void installedFilesSayTheSame() {
        QCOMPARE(contentsOf(ZENTORIA_SOURCE_DIR "/packaging/org.melvadex.Zentoria.xml"),
                 mimePackage(kReport));
        // The installed entry is the registered one, but for its command: the program found on the PATH.
        QByteArray installed = contentsOf(ZENTORIA_SOURCE_DIR "/packaging/zentoria.desktop.in");
        installed.replace("@ZENTORIA_APP_ID@", kAppId.toUtf8());
        QByteArray registered = desktopEntry(kReport, {kAppId, "zentoria"});
        registered.replace("Exec=\"zentoria\" %f", "Exec=zentoria %f");
        QCOMPARE(installed, registered);
    }

private:
    std::unique_ptr<QTemporaryDir> m_home;
    QString data() const { return m_home->filePath("data"); }
    QString config() const { return m_home->filePath("config"); }
};

QTEST_MAIN(tst_Association)
#include "tst_association.moc"
