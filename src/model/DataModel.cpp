#include "model/DataModel.h"

#include "model/DictionaryMapper.h"
#include "model/SchoolModel.h"

DataModel DataModel::fromSchool(const SchoolModel &school)
{
    const bool isLocal = DictionaryMapper::boolean(school.is_local).value_or(false);
    return {school.full_name, school.site_code, isLocal, school.url, school.url_qe, school.site_id};
}
