// Where the user's files lie, apart from a database that was put elsewhere. "~" stands for the home of the user.
#pragma once

namespace places {

/// Databases, templates, reports and the recovery store.
inline constexpr char support[] = "~/Library/Application Support/Vendaro";
/// The database nobody chose.
inline constexpr char defaultDatabase[] = "~/Library/Application Support/Vendaro/vendarodatabase.vendb";

} // namespace places
