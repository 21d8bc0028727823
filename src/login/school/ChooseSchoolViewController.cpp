#include "login/school/ChooseSchoolViewController.h"

#include "net/request/ResponseCallback.h"
#include "session/Account.h"
#include "ui/navigation/NavigationController.h"
#include "ui/shell/Shell.h"

#include <QPointer>

using namespace Qt::StringLiterals;

ChooseSchoolViewController::ChooseSchoolViewController(
    const LoginEnvironment &environment, SelectedCellBlock selectedCellBlock)
    : m_environment(environment)
    , m_selectedCellBlock(std::move(selectedCellBlock))
    , m_siteConfiguration(&environment.account->requests, &environment.account->loginModel)
{
    setTitle(u"选择学校"_s);
    connect(
        &m_schools, &SchoolListModel::schoolsChanged, this, [this] { setState(State::Loaded); });
}

ChooseSchoolViewController *ChooseSchoolViewController::present(
    const LoginEnvironment &environment, SelectedCellBlock selectedCellBlock)
{
    Navigator *navigator = environment.shell->navigator();
    auto *chooser = new ChooseSchoolViewController(environment, std::move(selectedCellBlock));
    auto *frame = new NavigationController(navigator, u"ChooseSchoolScreen"_s, chooser);
    chooser->setParent(frame);
    navigator->present(QString::fromLatin1(NavigationController::screenName), frame);
    return chooser;
}

void ChooseSchoolViewController::viewDidLoad()
{
    load();
}

void ChooseSchoolViewController::load()
{
    setState(State::Loading);
    Toast *toast = m_environment.shell->toast();
    m_siteConfiguration.load(
        [self = QPointer(this), toast, loading = toast->showLoading(u"请稍后"_s)](
            int status, const QList<DataModel> &rows, const auto &error) {
            toast->hideLoading(loading);
            if (!self)
                return;
            if (status == ResponseStatus::success)
                self->m_schools.setSchools(rows);
            else
                self->setState(State::Failed, ResponseErrorInfo::textOf(error));
        });
}

void ChooseSchoolViewController::textDidChange(const QString &searchText)
{
    m_schools.setSearchText(searchText);
}

void ChooseSchoolViewController::didSelectRow(int row)
{
    const auto school = m_schools.schoolAt(row);
    if (!school || !m_selectedCellBlock)
        return;
    std::exchange(m_selectedCellBlock, {})(*school);
    m_environment.shell->navigator()->dismiss(this);
}

void ChooseSchoolViewController::setState(State state, const QString &failureText)
{
    m_state = state;
    m_failureText = failureText;
    Q_EMIT stateChanged();
}
