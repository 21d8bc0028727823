#pragma once

#include <QObject>
#include <qqmlregistration.h>

class MainQueue;

//! A short text. One at a time: a newer one takes the older one's place and its own full time. One
//! for the process, owned by Shell.
class Toast : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The toast is made in C++.")
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(Kind kind READ kind NOTIFY changed)
    Q_PROPERTY(bool visible READ isVisible NOTIFY changed)

public:
    enum class Kind { Plain, Error, Success, Loading };
    Q_ENUM(Kind)

    explicit Toast(MainQueue &queue, QObject *parent = nullptr);

    //! These go by themselves. An empty text shows nothing.
    void show(const QString &text);
    void showError(const QString &text);
    void showSuccess(const QString &text);
    //! Stays until its number is given to hideLoading(), or another toast takes its place.
    quint64 showLoading(const QString &text);
    //! Hides nothing but that one.
    void hideLoading(quint64 number);

    QString text() const { return m_text; }
    Kind kind() const { return m_kind; }
    bool isVisible() const { return m_visible; }

Q_SIGNALS:
    void changed();

private:
    void hide();
    void present(const QString &text, Kind kind);
    void presentForAWhile(const QString &text, Kind kind);

    MainQueue &m_queue;
    QString m_text;
    Kind m_kind = Kind::Plain;
    bool m_visible = false;
    quint64 m_generation = 0;
};
