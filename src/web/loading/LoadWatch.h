#pragma once

#include <QObject>
#include <qqmlregistration.h>

#include <memory>

class MainQueue;

//! How long a load has shown nothing. Owned by WebView.
class LoadWatch : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by WebView.")
    Q_PROPERTY(bool slow READ isSlow NOTIFY slowChanged)

public:
    explicit LoadWatch(MainQueue *mainQueue);
    ~LoadWatch() override;

    //! Long enough for the user to be told that something is under way.
    bool isSlow() const { return m_isSlow; }

    //! A load begins, in place of any other.
    void begin();
    //! It shows something, or has ended.
    void end();

Q_SIGNALS:
    void slowChanged();
    //! The server has not answered for too long; the load counts as ended.
    void gaveUp();

private:
    void setSlow(bool slow);

    MainQueue *m_mainQueue;
    std::unique_ptr<QObject> m_load; // while one shows nothing: what its times belong to
    bool m_isSlow = false;
};
