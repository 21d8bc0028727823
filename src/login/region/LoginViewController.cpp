#include "login/region/LoginViewController.h"

#include "login/enabling/PActivateViewController.h"
#include "login/enabling/STActivateViewController.h"
#include "login/form/LoginTexts.h"
#include "login/region/RegionTree.h"
#include "login/screen/AskedSchool.h"
#include "model/DictionaryMapper.h"
#include "model/LoginModel.h"
#include "model/StringFormat.h"
#include "net/catalogue/RequestInterface.h"
#include "session/Account.h"
#include "ui/navigation/NavigationController.h"
#include "ui/picker/PickerViewController.h"
#include "ui/shell/Shell.h"

#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace {

const QString presetPlace = u"北京"_s;
const QString cityFirst = u"请先选择省市"_s;
const QString noSchoolThere = u"您所选的地区没入驻学校，请确认选择的地区是否错误?"_s;

PickerViewController::Selection positionOf(
    const QList<AddressModel> &tree, const QString &provinces, const QString &city)
{
    const int province = RegionTree::indexOf(tree, provinces);
    return {province, province < 0 ? -1 : RegionTree::indexOf(tree.at(province).list, city)};
}

}

LoginViewController::LoginViewController(const LoginEnvironment &environment)
    : SchoolLoginViewController(environment)
    , m_request(environment.shell->progressHUD())
{
    connect(&loginViewModel(), &LoginViewModel::loginEnableSignal, this,
        &LoginViewController::loginEnabledChanged);
}

void LoginViewController::configLoginInfo()
{
    SchoolLoginViewController::configLoginInfo();
    showCity(
        environment().account->loginModel.provinces(), environment().account->loginModel.city());
}

void LoginViewController::takeUp(const AskedSchool &school)
{
    SchoolLoginViewController::takeUp(school);
    showCity(school.provinces, school.city);
    m_dataArr = schoolsOfCity();
}

void LoginViewController::showCity(const QString &provinces, const QString &city)
{
    m_provinces = provinces;
    m_city = city;
    loginViewModel().provinces = provinces;
    loginViewModel().city = city;
    Q_EMIT cityChanged();
}

QList<DistrictModel> LoginViewController::schoolsOfCity() const
{
    const auto place = positionOf(m_totalDataArr, m_provinces, m_city);
    if (place.second < 0)
        return {};
    return m_totalDataArr.at(place.first).list.at(place.second).list;
}

QString LoginViewController::provincesText() const
{
    return isCityChosen() ? m_provinces : u"选择省份"_s;
}

QString LoginViewController::cityText() const
{
    return isCityChosen() ? StringFormat::format(u"%@-%@"_s, m_provinces, m_city) : u"选择城市"_s;
}

// Blanks alone are no account here, though they are sent as typed.
QString LoginViewController::tested(const QString &typed) const
{
    return typed.trimmed();
}

bool LoginViewController::textFieldShouldBeginEditing(Field field)
{
    switch (field) {
    case Field::Provinces:
        getSchoolData([this] { setCity(); });
        return false;
    case Field::City:
        if (isCityChosen())
            getSchoolData([this] { setCity(); });
        else
            showError(cityFirst);
        return false;
    case Field::School:
        if (isCityChosen())
            getSchoolData([this] { setSchool(); });
        else
            showError(cityFirst);
        return false;
    case Field::Account:
        break;
    }
    if (siteCode().isEmpty())
        showError(LoginTexts::schoolFirst);
    return !siteCode().isEmpty();
}

void LoginViewController::getSchoolData(const std::function<void()> &then)
{
    if (m_request.isRunning() || m_picker)
        return;
    if (!m_totalDataArr.isEmpty())
        return then();
    m_request.begin(u"获取省市学校数据"_s);
    environment().account->requests.getSchoolDataWithResponse(
        [self = QPointer(this), then](int status, const QJsonValue &data, const auto &) {
            if (!self)
                return;
            self->m_request.end();
            if (status == ResponseStatus::success)
                self->m_totalDataArr = RegionTree::read(data[u"tree"].toArray());
            if (self->m_totalDataArr.isEmpty())
                return self->showError(u"获取省市学校失败！"_s);
            self->m_dataArr = self->schoolsOfCity();
            then();
        });
}

void LoginViewController::setCity()
{
    QList<PickerViewController::Row> rows;
    for (const AddressModel &province : std::as_const(m_totalDataArr)) {
        rows << PickerViewController::Row {province.name};
        for (const CityModel &city : province.list)
            rows.last().seconds << city.name;
    }
    auto preset = positionOf(m_totalDataArr, m_provinces, m_city);
    if (preset.second < 0)
        preset = positionOf(m_totalDataArr, presetPlace, presetPlace);
    m_picker = new PickerViewController(environment().shell, u"选择省市"_s,
        PickerViewController::Columns::Two, rows, preset,
        [self = QPointer(this)](const PickerViewController::Selection &selection) {
            if (self)
                self->didChooseCity(selection.first, selection.second);
        });
    m_picker->show();
}

void LoginViewController::didChooseCity(int province, int city)
{
    if (city < 0)
        return showError(noSchoolThere);
    const AddressModel &chosenProvince = m_totalDataArr.at(province);
    const CityModel &chosenCity = chosenProvince.list.at(city);
    if (m_provinces != chosenProvince.name || m_city != chosenCity.name)
        setChosenSchool({}, {});
    showCity(chosenProvince.name, chosenCity.name);
    m_dataArr = chosenCity.list;
    if (m_dataArr.isEmpty())
        showError(noSchoolThere);
}

void LoginViewController::setSchool()
{
    if (m_dataArr.isEmpty())
        return showError(noSchoolThere);
    QList<PickerViewController::Row> rows;
    for (const DistrictModel &school : std::as_const(m_dataArr))
        rows << PickerViewController::Row {school.name};
    m_picker = new PickerViewController(environment().shell, u"选择学校"_s,
        PickerViewController::Columns::One, rows, {RegionTree::indexOf(m_dataArr, schoolText())},
        [self = QPointer(this)](const PickerViewController::Selection &selection) {
            if (self)
                self->didChooseSchool(self->m_dataArr.at(selection.first));
        });
    m_picker->show();
}

void LoginViewController::didChooseSchool(const DistrictModel &district)
{
    const SchoolModel &school = district.school;
    LoginModel *loginModel = &environment().account->loginModel;
    // What the tree does not say stays as the last school left it: deliberate.
    if (!school.is_local.isNull())
        loginModel->setIsLocal(DictionaryMapper::boolean(school.is_local).value_or(false));
    if (!school.url.isNull())
        loginModel->setLocalUrl(school.url);
    if (!school.url_qe.isNull())
        loginModel->setLocalUrlQe(school.url_qe);
    setChosenSchool(district.name, school.site_code);
    setWechatLoginHidden(loginModel->isLocal());
}

void LoginViewController::activate()
{
    if (siteCode().isEmpty())
        return showError(LoginTexts::schoolFirst);
    auto *navigation = NavigationController::of(this);
    if (!navigation)
        return;
    ActivateFormViewController *step;
    if (isPatriarch())
        step = new PActivateViewController(environment());
    else
        step = new STActivateViewController(environment());
    navigation->push(u"ActivateScreen"_s, step);
}
