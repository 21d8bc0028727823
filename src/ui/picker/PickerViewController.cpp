#include "ui/picker/PickerViewController.h"

#include "ui/shell/Shell.h"

using namespace Qt::StringLiterals;

namespace {

int within(int index, qsizetype count)
{
    return index >= 0 && index < count ? index : count > 0 ? 0 : -1;
}

}

PickerViewController::PickerViewController(Shell *shell, const QString &title, Columns columns,
    const QList<Row> &rows, const Selection &preset, Answer answer)
    : m_shell(shell)
    , m_columns(columns)
    , m_rows(rows)
    , m_answer(std::move(answer))
{
    setTitle(title);
    select(preset);
}

void PickerViewController::show()
{
    const QString name = u"PickerScreen"_s;
    m_shell->navigator()->registerScreen(name, QUrl(u"qrc:/qt/qml/Vant/Ui/PickerScreen.qml"_s));
    m_shell->navigator()->present(name, this);
}

QStringList PickerViewController::firstTexts() const
{
    QStringList texts;
    for (const Row &row : m_rows)
        texts << row.text;
    return texts;
}

QStringList PickerViewController::secondTexts() const
{
    return m_selection.first < 0 ? QStringList() : m_rows.at(m_selection.first).seconds;
}

void PickerViewController::setFirstIndex(int index)
{
    if (index != m_selection.first)
        select({index, 0});
}

void PickerViewController::setSecondIndex(int index)
{
    if (index != m_selection.second)
        select({m_selection.first, index});
}

void PickerViewController::select(const Selection &selection)
{
    m_selection.first = within(selection.first, m_rows.size());
    m_selection.second = within(selection.second, secondTexts().size());
    Q_EMIT selectionChanged();
}

void PickerViewController::confirm()
{
    if (m_leaving)
        return;
    cancel();
    if (m_answer)
        m_answer(m_selection);
}

void PickerViewController::cancel()
{
    if (m_leaving)
        return;
    m_leaving = true;
    Q_EMIT leavingChanged();
}

void PickerViewController::left()
{
    m_shell->navigator()->dismiss(this);
}

bool PickerViewController::handleBack()
{
    cancel();
    return true;
}
