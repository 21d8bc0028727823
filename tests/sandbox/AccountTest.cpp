#include "Sandbox.h"

#include <map>

namespace {

httplib::Params password(const std::string &code, const std::string &pwd = "vant1234")
{
    return {{"user_code", code}, {"user_pwd", pwd}, {"bind_type", ""}, {"login_type", ""}};
}

httplib::Params token(const std::string &value)
{
    return {{"login_token", value}, {"login_type", "3"}};
}

}

//! Who may sign in, how, and what a login hands out.
class AccountTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void passwordsSignInOrAreRefused();
    void eitherCookieIsASession();
    void tokensOutliveTheProcessAtTheirSiteOnly();

private:
    const Sandbox m_sandbox;
};

void AccountTest::passwordsSignInOrAreRefused()
{
    const struct
    {
        std::string code;
        std::string pwd;
        int answer;
        int userType = 0;
        std::string site = "school01";
    } rows[] {
        {"student01", "vant1234", 200, 1, "school07"},
        {"teacher01", "vant1234", 200, 2},
        {"parent01", "vant1234", 200, 5},
        {"special01", "p+w&x=1 %41#/?密码", 200, 1},
        {"notoken01", "vant1234", 200, 1},
        {"student01", "wrong", 401},
        {"", "", 401},
        {"locked01", "vant1234", 423},
        {"nomsg01", "vant1234", 500},
        {"student01", "vant1234", 404, 0, "nowhere"},
    };
    for (const auto &[code, pwd, expected, userType, site] : rows) {
        const Json answer = m_sandbox.portal("login4H5", password(code, pwd), site);
        COMPARE(answer["code"], expected);
        COMPARE(answer.contains("msg"), code != "nomsg01");
        if (expected != 200)
            continue;
        const Json &data = answer["data"];
        COMPARE(data["user_type"], userType);
        COMPARE(data["user"]["user_code"], code);
        COMPARE(data["redirect_url"], m_sandbox.base() + "/portal/index.html?site=" + site);
        COMPARE(data.contains("login_token"), code != "notoken01");
    }
}

void AccountTest::eitherCookieIsASession()
{
    const httplib::Result result = m_sandbox.get(
        "/school01/do?action=gpl/portal&start=login4H5&user_code=student01&user_pwd=vant1234");
    std::map<std::string, std::string> found;
    for (size_t i = 0; i < result->get_header_value_count("Set-Cookie"); ++i) {
        const std::string cookie = result->get_header_value("Set-Cookie", i);
        found[cookie.substr(0, cookie.find('='))] = cookie;
    }
    COMPARE(found.size(), 3u);
    QVERIFY(found["mo"].ends_with("; Path=/"));
    QVERIFY(found["tmo"].ends_with("; Path=/; Max-Age=2592000"));
    for (const std::string name : {"mo", "tmo"}) {
        const std::string cookie = found[name].substr(0, found[name].find(';'));
        const httplib::Result session = m_sandbox.client().Get(
            "/portal/api/session", {{"Cookie", "a=1; " + cookie + ";b=2"}});
        COMPARE(session->status, 200);
        COMPARE(Json::parse(session->body)["by"], name);
    }
    COMPARE(m_sandbox.status("/portal/api/session"), 401);
}

void AccountTest::tokensOutliveTheProcessAtTheirSiteOnly()
{
    const std::string value
        = Sandbox().portal("login4H5", password("student01"))["data"]["login_token"];
    const Json answer = m_sandbox.portal("login4H5", token(value));
    COMPARE(answer["data"]["user"]["user_code"], "student01");

    std::string forged = value;
    forged.back() = forged.back() == '0' ? '1' : '0';
    for (const std::string &bad : {forged, std::string("x"), std::string(), value + "00"})
        COMPARE(m_sandbox.portal("login4H5", token(bad))["code"], 401);
    COMPARE(m_sandbox.portal("login4H5", token(value), "school02")["code"], 401);
}

QTEST_GUILESS_MAIN(AccountTest)
#include "AccountTest.moc"
