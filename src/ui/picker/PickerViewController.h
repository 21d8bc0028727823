#pragma once

#include "ui/navigation/ViewController.h"

#include <QList>
#include <QStringList>

#include <functional>

class Shell;

//! A choice by one or two wheels at the lower edge of what is shown; what the second wheel offers
//! depends on where the first one stands. Owned by the navigator once it is shown, and deleted when
//! it has gone.
class PickerViewController : public ViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Pickers are asked for in C++.")
    Q_PROPERTY(QStringList firstTexts READ firstTexts CONSTANT)
    Q_PROPERTY(QStringList secondTexts READ secondTexts NOTIFY selectionChanged)
    Q_PROPERTY(int firstIndex READ firstIndex WRITE setFirstIndex NOTIFY selectionChanged)
    Q_PROPERTY(int secondIndex READ secondIndex WRITE setSecondIndex NOTIFY selectionChanged)
    Q_PROPERTY(bool hasSecondColumn READ hasSecondColumn CONSTANT)
    Q_PROPERTY(bool leaving READ isLeaving NOTIFY leavingChanged)

public:
    //! One row of the first wheel, and what the second one offers while it stands there.
    struct Row
    {
        QString text;
        QStringList seconds {};
    };
    //! A position on each wheel; -1 for a wheel that is empty or not there.
    struct Selection
    {
        int first = 0;
        int second = -1;

        bool operator==(const Selection &) const = default;
    };
    enum class Columns { One, Two };
    //! Told once, and only when the choice is confirmed; the picker is on its way out by then.
    using Answer = std::function<void(const Selection &selection)>;

    //! \a preset: positions that no wheel has are taken for the first ones.
    PickerViewController(Shell *shell, const QString &title, Columns columns,
        const QList<Row> &rows, const Selection &preset, Answer answer);

    //! Opens it over what is shown.
    void show();
    Q_INVOKABLE void confirm();
    Q_INVOKABLE void cancel();
    //! For the view: it has moved out.
    Q_INVOKABLE void left();

    bool isOverlay() const override { return true; }
    bool handleBack() override;

    QStringList firstTexts() const;
    QStringList secondTexts() const;
    int firstIndex() const { return m_selection.first; }
    //! Takes the second wheel back to its first position.
    void setFirstIndex(int index);
    int secondIndex() const { return m_selection.second; }
    void setSecondIndex(int index);
    bool hasSecondColumn() const { return m_columns == Columns::Two; }
    bool isLeaving() const { return m_leaving; }

Q_SIGNALS:
    void selectionChanged();
    void leavingChanged();

private:
    void select(const Selection &selection);

    Shell *m_shell;
    Columns m_columns;
    QList<Row> m_rows;
    Selection m_selection;
    Answer m_answer;
    bool m_leaving = false;
};
