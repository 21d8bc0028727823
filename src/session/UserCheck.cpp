#include "session/UserCheck.h"

#include "model/DictionaryMapper.h"
#include "model/UserModel.h"

bool refuses(UserCheck check, const QJsonObject &answer)
{
    const auto user = DictionaryMapper::model<UserModel>(answer.value(u"user").toObject());
    return check == UserCheck::Yes && user.user_type == UserModel::refusedType;
}

QString refusalText()
{
    return QStringLiteral("亲，您没有权限登录");
}
