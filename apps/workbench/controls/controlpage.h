// SPDX-License-Identifier: MIT
#ifndef CONTROLPAGE_H
#define CONTROLPAGE_H

#include "signallog.h"
#include "valuefield.h"

#include <QVector>
#include <QWidget>

#include <functional>

class ControlPage;
class QFormLayout;
class QPlainTextEdit;

/// A control beside those that every page makes by itself.
struct ControlVariant
{
    const char *suffix; ///< Of its name.
    const char *label;
    std::function<QWidget *(QWidget *parent)> make;
};

/// A setting of the class that is no property of it. It goes to all controls of the page.
struct ControlSetting
{
    const char *id; ///< Object name of its field.
    const char *label;
    ValueKind kind;
    std::function<void(QWidget &control, const QVariant &value)> apply;
};

/// What a page shows of a class: all that differs from page to page.
///
/// Texts are in English, to be translated in the context "ControlPages".
struct ControlPageData
{
    /// States that a page makes by itself, bits.
    enum State {
        kUnhooked = 1,
        kHooked = 2,
        kBlank = 4, ///< Nothing is shown, as when selected entities differ.
        kDisabled = 8,
        kLong = 16, ///< With more rows than fit.
        kPlain = kUnhooked | kDisabled, ///< Of a class that knows no drawing.
        kBound = kUnhooked | kHooked | kBlank | kDisabled | kLong,
    };

    const char *className;
    const char *id; ///< Controls are named by it and their state, such as "colorComboHooked".
    const char *purpose; ///< One sentence.
    unsigned states;
    std::function<QWidget *(bool hooked, QWidget *parent)> make; ///< Of the states.
    QVector<ControlVariant> variants = {};
    QVector<ControlSetting> settings = {};
    /// Fills the control of the state kLong. By default a drop-down gets plain rows.
    std::function<void(QWidget &control)> fillLong = nullptr;
    /// When all controls are there.
    std::function<void(ControlPage &page)> finish = nullptr;
    QStringList unheard = {}; ///< Signals that are not logged.
    int columns = 0; ///< Of controls, each below its label; 0: one a row, beside its label.
};

/// A class of the library: its controls in their states, fields for its properties and settings, and a log of what its
/// controls emit. Properties and signals are those that the class and its base classes below QWidget declare.
class ControlPage : public QWidget
{
    Q_OBJECT
public:
    explicit ControlPage(const ControlPageData &data, QWidget *parent = nullptr);
    ~ControlPage() override;

    const QVector<QWidget *> &controls() const { return m_controls; }
    SignalLog &log() { return m_log; }
    /// What the log calls a control of the page.
    static QString nameOf(const QWidget &control);
    /// Adds a line to the log.
    void tell(const QString &line);
    /// Adds a field of the page's own to the settings, above the properties.
    void addSetting(const QString &label, QWidget *field);

private:
    QWidget *makeStates(const ControlPageData &data);
    QWidget *makeSettings(const ControlPageData &data);
    QWidget *makeLog();
    void addProperties(QFormLayout &form);

    QPlainTextEdit *m_lines;
    SignalLog m_log;
    QVector<QWidget *> m_controls; // children of the page
    QFormLayout *m_settings = nullptr;
    int m_ownSettings = 0; // its first rows; below them stand the properties
    bool m_showsClass = false; // the controls are of the class that the page is about
};

/// A page's head: the name and what it is for.
QWidget *makePageHead(const QString &name, const QString &purpose);

#endif
