#pragma once

#include <QString>
#include <QStringList>

//! What an operator sets for a deployment; every value has a default that is compiled in.
//! A plain record: it is read from a file in app/ and handed down to whoever needs a value.
struct DeploymentConfiguration
{
    //! Base addresses of the platform's servers, each ending with "/".
    struct Hosts
    {
        QString regions = QStringLiteral("https://regions.vant.example/");
        QString rb = QStringLiteral("https://rb.vant.example/");
        QString publicConfiguration = QStringLiteral("https://public.vant.example/");
        QString base = QStringLiteral("https://base.vant.example/");
        QString portal = QStringLiteral("https://portal.vant.example/");
        QString official = QStringLiteral("https://www.vant.example/");
        QString content = QStringLiteral("https://content.vant.example/");

        bool operator==(const Hosts &) const = default;
    };

    struct App
    {
        QString build = QStringLiteral("1");
        QString displayName = QStringLiteral("成长平台");
        QString loginScreen = QStringLiteral("current"); //!< "current" or "older"
        bool patriarch = false; //!< parent mode

        bool operator==(const App &) const = default;
    };

    struct Push
    {
        QString broker; //!< empty: no push service
        QString appId = QStringLiteral("Ws6pHj2KeDn8TrVbLc4QyA");
        QString appKey = QStringLiteral("Rf3nYtUo9GkE5aLqZvM0Xc");
        QString appSecret = QStringLiteral("Qm4TzLr8VbN2xKc7PdWs1H");

        bool operator==(const Push &) const = default;
    };

    struct Location
    {
        QString mapKey = QStringLiteral("3c9e0b7d51f6a2e84c07d9b3a6e5f201");
        QString regeocodeUrl;

        bool operator==(const Location &) const = default;
    };

    struct Wechat
    {
        QString appId = QStringLiteral("wx3f5a9c2e7b1d4068");
        QString universalLink;
        QString authoriseUrl;

        bool operator==(const Wechat &) const = default;
    };

    struct Qq
    {
        QString appId = QStringLiteral("1104839275");
        QString appKey = QStringLiteral("Kd2wXq9LmTz5Rb8N");
        QString shareUrl;

        bool operator==(const Qq &) const = default;
    };

    Hosts hosts;
    App app;
    QString customerServiceAccount = QStringLiteral("10000");
    Push push;
    Location location;
    Wechat wechat;
    Qq qq;
    QString extraCaFile; //!< PEM file of further certificate authorities; empty: the system's alone
    QStringList trustedOrigins; //!< pages the bridge serves; empty: every page of the home view
    QString foreignPages = QStringLiteral("here"); //!< other pages' place: "here" or "browser"

    bool operator==(const DeploymentConfiguration &) const = default;
};
