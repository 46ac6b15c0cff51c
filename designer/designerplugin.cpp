// SPDX-License-Identifier: MIT
#include "designerwidgets.h"

#include <QIcon>
#include <QObject>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>

#include <memory>
#include <vector>

namespace {

/// A row of the table, as Designer asks for it.
class WidgetOfTable : public QDesignerCustomWidgetInterface
{
public:
    explicit WidgetOfTable(const DesignerWidget &row) : m_row(row) { }

    QString name() const override { return QString::fromLatin1(m_row.className); }
    QString includeFile() const override { return QString::fromLatin1(m_row.header); }
    QString group() const override { return QString::fromUtf8(m_row.group); }
    QString toolTip() const override { return QString::fromUtf8(m_row.toolTip); }
    QString whatsThis() const override { return QString::fromUtf8(m_row.whatsThis); }
    QIcon icon() const override
    {
        // The widget box shows none that does not tell its sizes, as drawings do not.
        const QIcon drawing(QStringLiteral(":/zevadesigner/icons/%1.svg").arg(QLatin1String(m_row.icon)));
        QIcon icon;
        for (const int side : {22, 44})
            icon.addPixmap(drawing.pixmap(side, side));
        return icon;
    }
    bool isContainer() const override { return m_row.isContainer; }
    QWidget *createWidget(QWidget *parent) override { return m_row.make(parent); }
    QString domXml() const override { return designerXml(m_row); }

private:
    const DesignerWidget &m_row;
};

} // namespace

class ZevaDesignerPlugin : public QObject, public QDesignerCustomWidgetCollectionInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QDesignerCustomWidgetCollectionInterface")
    Q_INTERFACES(QDesignerCustomWidgetCollectionInterface)
public:
    ZevaDesignerPlugin()
    {
        for (const DesignerWidget &row : designerWidgets())
            m_widgets.push_back(std::make_unique<WidgetOfTable>(row));
    }

    QList<QDesignerCustomWidgetInterface *> customWidgets() const override
    {
        QList<QDesignerCustomWidgetInterface *> widgets;
        for (const auto &widget : m_widgets)
            widgets << widget.get();
        return widgets;
    }

private:
    std::vector<std::unique_ptr<WidgetOfTable>> m_widgets;
};

#include "designerplugin.moc"
