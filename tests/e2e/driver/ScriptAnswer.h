#pragma once

#include <QObject>
#include <QVariant>

//! Takes the value of a script that runs in a page.
class ScriptAnswer : public QObject
{
    Q_OBJECT

public:
    Q_INVOKABLE void take(const QVariant &value)
    {
        m_value = value;
        m_taken = true;
    }

    bool isTaken() const { return m_taken; }
    QVariant value() const { return m_value; }

private:
    bool m_taken = false;
    QVariant m_value;
};
