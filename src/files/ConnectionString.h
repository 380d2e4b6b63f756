// SPDX-License-Identifier: MIT
// The ODBC connection string of a project's database: pairs "name=value;" one after the other, names and
// values as they stand in the file.
#pragma once

#include "ini/INIFile.h"

namespace vlgs {

/// The account to log in with and what else a caller adds to the file's own pairs.
struct ConnectionRequest {
    String schemaToken;
    /// An empty user stands for the built-in default account.
    String user;
    String password;
    bool isEncrypted = false;
    std::int32_t sequenceKey = 0;
};

/// Raises 11558 under modFiles.g_ValidateODBCSectionExists when there are no sections or none of that name.
void g_ValidateODBCSectionExists(Collection* sections, const String& name);

/// The string for a project or link document, "" for no document. Raises 11504 under
/// "g_BuildConnectionString" for another kind of document, and 11558 when it has no section "ODBC".
String g_BuildConnectionString(const INIFile* document, const ConnectionRequest& request);

/// The same for a file, "" when there is no such file: a link file when its extension is "VLL", else a
/// project file. Raises what reading it raises.
String g_BuildConnectionStringFromPath(const String& sPath, const ConnectionRequest& request);

} // namespace vlgs
