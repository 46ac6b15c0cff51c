// SPDX-License-Identifier: MIT
#include "private/zvtranslation.h"

#include "private/zvqtstring.h"

#include <QComboBox>
#include <QEvent>
#include <QSignalBlocker>

#include <utility>

namespace {

class LanguageWatch : public QObject
{
public:
    LanguageWatch(QWidget *widget, std::function<void()> retranslate)
        : QObject(widget), m_retranslate(std::move(retranslate))
    {
        widget->installEventFilter(this);
    }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::LanguageChange && watched == parent())
            m_retranslate();
        return QObject::eventFilter(watched, event);
    }

private:
    const std::function<void()> m_retranslate;
};

} // namespace

ZvString zvTranslated(const char *context, const char *source)
{
    return zvToZvString(QCoreApplication::translate(context, source));
}

void zvOnLanguageChange(QWidget *widget, std::function<void()> retranslate)
{
    new LanguageWatch(widget, std::move(retranslate));
}

void zvTranslateRows(QComboBox *combo, const char *context, std::vector<const char *> sources)
{
    const auto translated = [context, sources = std::move(sources)] {
        QStringList texts;
        for (const char *source : sources)
            texts << QCoreApplication::translate(context, source);
        return texts;
    };
    zvOnLanguageChange(combo, [combo, translated, before = translated()]() mutable {
        const QStringList after = translated();
        const QSignalBlocker quiet(combo); // the row stays the same one
        for (int row = 0; row < combo->count(); ++row) {
            const int place = before.indexOf(combo->itemText(row));
            if (place >= 0)
                combo->setItemText(row, after.at(place));
        }
        before = after;
    });
}
