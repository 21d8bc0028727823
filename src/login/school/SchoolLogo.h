#pragma once

#include <QObject>
#include <QUrl>

class LoginViewModel;
class HTTPNetwork;

//! The picture at the top of the login screen: the application's own until the chosen school's has
//! been loaded. Owned by the login screen's controller.
class SchoolLogo : public QObject
{
    Q_OBJECT

public:
    SchoolLogo(LoginViewModel *viewModel, HTTPNetwork *network, QObject *parent);

    //! Asks for the logo of another school; answers about the one before are dropped from now on.
    void request(const QString &siteId);
    //! For a QML image; the loaded picture travels within the address.
    QUrl source() const { return m_source; }

    //! Where a school's logo lies: an address without a scheme is an https one. Null for no logo.
    static QString address(const QString &h5_logo);

Q_SIGNALS:
    void sourceChanged();

private:
    void load(const QString &address, quint64 request);
    void show(const QUrl &source);

    LoginViewModel *m_viewModel;
    HTTPNetwork *m_network;
    QUrl m_source;
    quint64 m_newestRequest = 0;
};
