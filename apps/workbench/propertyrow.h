// SPDX-License-Identifier: MIT
#ifndef PROPERTYROW_H
#define PROPERTYROW_H

#include "db/zvdbobjectid.h"
#include "zvqtcontrolhelp.h"

#include <QIcon>
#include <QObject>
#include <QStringList>
#include <QVector>

#include <memory>
#include <vector>

class ZvDbDatabase;
struct PropertySpec;

/// One property of the selection as the update bus knows it: with nothing selected the drawing's current value. The ten
/// rows hold the ten summaries, so that the panel shows what a control would.
class PropertyRow : public QObject, public CZvQtControlHelp
{
    Q_OBJECT
    Q_INTERFACES(CZvQtControlHelp)
    Q_PROPERTY(QString text READ text)
    Q_PROPERTY(bool enabled READ isEnabled)
public:
    /// A value that some of the selected entities have.
    struct ValueCount
    {
        QString value;
        bool isPresent = true; ///< False: of the entities that have no such property.
        int count = 0;
    };

    static int count();
    /// \a index from 0 to count() - 1.
    explicit PropertyRow(int index, QObject *parent = nullptr);
    ~PropertyRow() override;

    QString label() const;
    /// The common or current value, "mixed", or empty without a drawing.
    QString text() const { return m_text; }
    bool isEnabled() const { return m_enabled; }
    bool isMixed() const { return m_mixed; }
    /// Empty for what has no picture.
    QIcon icon(const QString &value) const;

    void acceptUpdateUI(const CZvGlobalUIReactorHelp &notice) override;
    /// Reads the summary and the drawing again.
    void refresh();

    /// What can be chosen in the current drawing.
    QStringList choices() const;
    /// Whether other values than the choices may be typed.
    bool takesText() const;
    /// Writes a value to the selected entities, or as the drawing's current one. False for a text that is no value.
    bool write(const QString &value);

    /// The values among these entities, in order of their first appearance. Opens each.
    QVector<ValueCount> countValues(const std::vector<ZvDbObjectId> &ids) const;
    /// Those of the entities that have the value, in their order.
    std::vector<ZvDbObjectId> entitiesWith(const ValueCount &value, const std::vector<ZvDbObjectId> &ids) const;

Q_SIGNALS:
    /// Something was read again.
    void refreshed();

private:
    class ValueSorter;

    const PropertySpec &m_spec;
    std::unique_ptr<ZvGlobalUIReactorHelp::SPickFirstInfo> m_info;
    QString m_text;
    bool m_enabled = false;
    bool m_mixed = false;
};

#endif
