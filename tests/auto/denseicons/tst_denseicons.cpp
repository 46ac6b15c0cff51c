// SPDX-License-Identifier: MIT
#include "modulesession.h"
#include "qt_utils.h"
#include "zevatest.h"

#include <QDir>
#include <QLabel>
#include <QTemporaryDir>
#include <QWidget>
#include <QWindow>

/// The installed pictures on a screen with two dots to a pixel.
class TestDenseIcons : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void iconTakesTheDensePicture_data();
    void iconTakesTheDensePicture();
    void iconIsEnlargedWithoutOne();
    void densePictureIsScaledToo();
    void blankIconStaysBlank();
    void dialogTakesTheDensePicture();

private:
    static QString iconFile(const QString &name)
    {
        return QCoreApplication::applicationDirPath() + QStringLiteral("/ico_zeva/") + name;
    }
    static QImage shown(const QIcon &icon)
    {
        QWidget window;
        window.winId();
        return icon.pixmap(window.windowHandle(), QSize(16, 16)).toImage().convertToFormat(QImage::Format_ARGB32);
    }
    static QImage file(const QString &path) { return QImage(path).convertToFormat(QImage::Format_ARGB32); }
    /// Compares dots, whatever their ratio.
    static bool isAlike(QImage a, QImage b)
    {
        a.setDevicePixelRatio(1);
        b.setDevicePixelRatio(1);
        return a == b;
    }
};

void TestDenseIcons::initTestCase()
{
    QCOMPARE(qApp->devicePixelRatio(), 2.0);
}

void TestDenseIcons::iconTakesTheDensePicture_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"layer_on", "layer_off", "layer_frozed", "layer_thaw", "layer_lock", "layer_unlock"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TestDenseIcons::iconTakesTheDensePicture()
{
    QFETCH(QString, name);
    const QImage picture = shown(zvsiQtCreateIcon(iconFile(name + QStringLiteral(".ico")), false, 16, 16));
    QCOMPARE(picture.size(), QSize(32, 32));
    QCOMPARE(picture.devicePixelRatio(), 2.0);
    const QImage dense = file(iconFile(name + QStringLiteral("@2x.ico")));
    QCOMPARE(dense.size(), QSize(32, 32));
    QVERIFY(isAlike(picture, dense));
    QVERIFY(!isAlike(picture, file(iconFile(name + QStringLiteral(".ico"))).scaled(32, 32))); // drawn, not enlarged
}

void TestDenseIcons::iconIsEnlargedWithoutOne()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("lone.ico"));
    QVERIFY(QFile::copy(iconFile(QStringLiteral("layer_on.ico")), path));
    const QImage picture = shown(zvsiQtCreateIcon(path, false, 16, 16));
    QVERIFY(isAlike(picture, file(path)));
}

void TestDenseIcons::densePictureIsScaledToo()
{
    const QIcon icon = zvsiQtCreateIcon(iconFile(QStringLiteral("layer_on.ico")), false, 8, 12);
    const QPixmap dense(iconFile(QStringLiteral("layer_on@2x.ico")));
    QWidget window;
    window.winId();
    const QImage picture = icon.pixmap(window.windowHandle(), QSize(8, 12)).toImage();
    QCOMPARE(picture.size(), QSize(16, 24));
    QVERIFY(isAlike(picture, dense.scaled(16, 24).toImage())); // dot by dot, nothing smoothed
}

void TestDenseIcons::blankIconStaysBlank()
{
    QImage clear(16, 16, QImage::Format_ARGB32);
    clear.fill(Qt::transparent);
    QVERIFY(isAlike(shown(zvsiQtCreateIcon(iconFile(QStringLiteral("layer_on.ico")), true, 16, 16)), clear));
}

void TestDenseIcons::dialogTakesTheDensePicture()
{
    const ModuleSession session;
    const ZvJsonPtr params = ElementValue::createObject(2);
    params->SetDataI("contentFlag", 1);
    params->SetDataI("flag", 3);
    params->SetDataI("dlgtype", 32);
    const ZvUiDialogBasePtr dialog = session.createDialog(L"MessageBox");
    QVERIFY(dialog->onInit(params, nullptr));
    const QList<QLabel *> labels = session.dialogOf(dialog)->findChildren<QLabel *>();
    int pictures = 0;
    for (const QLabel *label : labels) {
        const QPixmap picture = label->pixmap(Qt::ReturnByValue);
        if (picture.isNull())
            continue;
        ++pictures;
        QCOMPARE(label->size(), QSize(32, 32));
        QVERIFY(isAlike(picture.toImage().convertToFormat(QImage::Format_ARGB32),
                        file(iconFile(QStringLiteral("question@2x.png")))));
    }
    QCOMPARE(pictures, 1);
}

int main(int argc, char *argv[])
{
    zevaPinEnvironment();
    qputenv("QT_SCALE_FACTOR", "2");
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    zevaPinApplication();
    TestDenseIcons test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

#include "tst_denseicons.moc"
