#include "Sandbox.h"

std::string Sandbox::base(int host) const
{
    return "http://" + authority(Host(host)).toStdString();
}

httplib::Result Sandbox::get(const std::string &pathAndQuery, int host) const
{
    return client(host).Get(pathAndQuery);
}

int Sandbox::status(const std::string &pathAndQuery, int host) const
{
    const httplib::Result result = get(pathAndQuery, host);
    return result ? result->status : 0;
}

Json Sandbox::json(const std::string &pathAndQuery, int host) const
{
    const httplib::Result result = get(pathAndQuery, host);
    if (!result || result->status != 200)
        qFatal("no answer to %s", pathAndQuery.c_str());
    return Json::parse(result->body);
}

Json Sandbox::portal(
    const std::string &start, const httplib::Params &params, const std::string &site) const
{
    httplib::Params all = params;
    all.emplace("action", "gpl/portal");
    all.emplace("start", start);
    return json(httplib::append_query_params("/" + site + "/do", all));
}

int Sandbox::control(const std::string &what, const std::string &body) const
{
    const httplib::Result result = client().Post("/_control/" + what, body, "application/json");
    return result ? result->status : 0;
}

template <>
char *QTest::toString(const std::string &text)
{
    return qstrdup(text.c_str());
}
