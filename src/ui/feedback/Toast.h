#pragma once

#include <QList>
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
    //! Of a loading toast: how far the work is, 0 to 1; negative: not known.
    Q_PROPERTY(double progress READ progress NOTIFY changed)

public:
    enum class Kind { Plain, Error, Success, Loading };
    Q_ENUM(Kind)

    explicit Toast(MainQueue &queue, QObject *parent = nullptr);

    //! These go by themselves. An empty text shows nothing.
    void show(const QString &text);
    void showError(const QString &text);
    void showSuccess(const QString &text);
    //! Stays until its number is given to hideLoading(); those that go by themselves, and later
    //! ones of its kind, cover it meanwhile.
    quint64 showLoading(const QString &text);
    //! Says how far the work of that one is, 0 to 1.
    void showProgress(quint64 number, double progress);
    void hideLoading(quint64 number);

    QString text() const { return m_text; }
    Kind kind() const { return m_kind; }
    bool isVisible() const { return m_visible; }
    double progress() const { return m_progress; }

Q_SIGNALS:
    void changed();

private:
    struct Loading
    {
        quint64 number;
        QString text;
        double progress = -1;
    };

    void presentForAWhile(const QString &text, Kind kind);
    void presentLoading();
    void present(const QString &text, Kind kind, double progress);

    MainQueue &m_queue;
    QString m_text;
    Kind m_kind = Kind::Plain;
    bool m_visible = false;
    double m_progress = -1;
    QList<Loading> m_loadings;
    bool m_isCovered = false; // by one that goes by itself
    quint64 m_generation = 0;
    quint64 m_lastLoading = 0;
};
