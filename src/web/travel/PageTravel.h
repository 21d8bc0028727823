#pragma once

#include <QObject>
#include <qqmlregistration.h>

//! What lies over a page on its user's wish, and is left before the page is. Owned by WebView.
class PageTravel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by WebView.")
    Q_PROPERTY(bool finding READ isFinding WRITE setFinding NOTIFY findingChanged)

public:
    bool isFinding() const { return m_isFinding; }
    void setFinding(bool finding);

    //! Leaves the topmost; false where there is none.
    Q_INVOKABLE bool leave();

Q_SIGNALS:
    void findingChanged();
    //! The page shall be loaded anew.
    void reloadWanted();

private:
    bool m_isFinding = false;
};
