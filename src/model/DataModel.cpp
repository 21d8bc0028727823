#include "model/DataModel.h"

#include "model/SchoolModel.h"

DataModel DataModel::fromSchool(const SchoolModel &school)
{
    const bool isLocal = school.is_local == u"true" || school.is_local.toInt() != 0;
    return {school.full_name, school.site_code, isLocal, school.url, school.url_qe, school.site_id};
}
