// SPDX-License-Identifier: MIT
// load_form FORM PICTURE: loads a form with the plugins that are installed, and leaves a picture of it. 0 when each of
// its widgets is of the class that the form tells.
#include <QApplication>
#include <QFile>
#include <QUiLoader>
#include <QWidget>
#include <QXmlStreamReader>

#include <cstdio>

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    if (argc != 3)
        return 2;
    QFile file(QString::fromLocal8Bit(argv[1]));
    if (!file.open(QFile::ReadOnly))
        return 2;
    QWidget *form = QUiLoader().load(&file);
    if (!form)
        return 1;
    int widgets = 0;
    int wrong = 0;
    file.seek(0);
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement || xml.name() != QLatin1String("widget"))
            continue;
        const QString name = xml.attributes().value(QLatin1String("name")).toString();
        const QString wanted = xml.attributes().value(QLatin1String("class")).toString();
        const QWidget *widget = form->objectName() == name ? form : form->findChild<QWidget *>(name);
        const QString found
            = widget ? QString::fromLatin1(widget->metaObject()->className()) : QStringLiteral("missing");
        ++widgets;
        if (found == wanted)
            continue;
        ++wrong;
        std::printf("%s: %s, not %s\n", qPrintable(name), qPrintable(found), qPrintable(wanted));
    }
    std::printf("%d widgets, %d of a wrong class\n", widgets, wrong);
    form->show();
    application.processEvents();
    return form->grab().save(QString::fromLocal8Bit(argv[2])) && widgets > 1 && !wrong ? 0 : 1;
}
