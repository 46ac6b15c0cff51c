// SPDX-License-Identifier: MIT
#ifndef MESSAGEBOXES_H
#define MESSAGEBOXES_H

#include "base/zvstring.h"
#include "core/zvui.h"

#include <QStringList>

#include <vector>

/// Answers the kernel's message boxes for the life of the object, and remembers them.
class MessageBoxes
{
public:
    struct Shown
    {
        ZvString text;
        ZvString caption;
        unsigned flags;
    };

    /// Each box is answered with the button \a answer.
    explicit MessageBoxes(int answer = 1)
    {
        record().shown.clear();
        record().answer = answer;
        m_before = zvuiSetMessageBoxHook(answerBox);
    }
    ~MessageBoxes() { zvuiSetMessageBoxHook(m_before); }
    MessageBoxes(const MessageBoxes &) = delete;
    MessageBoxes &operator=(const MessageBoxes &) = delete;

    static const std::vector<Shown> &shown() { return record().shown; }
    /// The same, each as "text|caption|flags".
    static QStringList lines()
    {
        QStringList lines;
        for (const Shown &box : shown())
            lines << QString::fromUtf8(box.text.toUtf8().c_str()) + QLatin1Char('|')
                    + QString::fromUtf8(box.caption.toUtf8().c_str()) + QLatin1Char('|') + QString::number(box.flags);
        return lines;
    }

private:
    struct Record
    {
        std::vector<Shown> shown;
        int answer = 1;
    };

    static Record &record()
    {
        static Record record;
        return record;
    }
    static int answerBox(const ZvString &text, const ZvString &caption, unsigned flags)
    {
        record().shown.push_back({text, caption, flags});
        return record().answer;
    }

    ZvUiMessageBoxHook m_before;
};

#endif
