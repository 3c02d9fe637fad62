#pragma once

#include <Qt>

/// What a model tells a QueueTable beside the texts of its cells, on any cell of a row.
namespace TableRole {

enum Role {
    Status = Qt::UserRole, ///< of QueueObject; the row's icon
    IsInWork,              ///< bool
    Progress,              ///< double, from 0 to 1, of the row in work
    FileName               ///< QString, whose extension decides the row's type icon
};

} // namespace TableRole
