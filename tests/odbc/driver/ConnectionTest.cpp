// SPDX-License-Identifier: MIT
// A project file names a driver and a database; the driver manager opens it with the string that is built
// from the file, and the pairs that only the product knows do not disturb it.
#include "files/Files.h"
#include "platform/Scratch.h"

#include <gtest/gtest.h>

#include <sql.h>
#include <sqlext.h>

#include <string>

namespace vlgs::test {
namespace {

// A handle of the driver manager. `type` tells which kind and `parent` what it hangs on.
class Handle {
  public:
    Handle(SQLSMALLINT type, SQLHANDLE parent) : type_(type) {
        EXPECT_TRUE(SQL_SUCCEEDED(SQLAllocHandle(type, parent, &handle_)));
        if (type == SQL_HANDLE_ENV)
            SQLSetEnvAttr(handle_, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    }
    ~Handle() {
        if (type_ == SQL_HANDLE_DBC)
            SQLDisconnect(handle_);
        SQLFreeHandle(type_, handle_);
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    operator SQLHANDLE() const { return handle_; }

    testing::AssertionResult succeeded(SQLRETURN result) const {
        if (SQL_SUCCEEDED(result))
            return testing::AssertionSuccess();
        SQLCHAR state[6] = {};
        SQLCHAR text[512] = {};
        SQLGetDiagRec(type_, handle_, 1, state, nullptr, text, sizeof text, nullptr);
        return testing::AssertionFailure() << state << ' ' << text;
    }

  private:
    SQLSMALLINT type_;
    SQLHANDLE handle_ = nullptr;
};

SQLCHAR* characters(std::string& text) {
    return reinterpret_cast<SQLCHAR*>(text.data());
}

TEST(Odbc, TheDriverManagerOpensTheDatabaseOfAProjectFile) {
    const Scratch scratch;
    const auto files = make<Files>();
    const auto project = files->CreateINIFile(scratch.path("demo"), eINI_VLS);
    project->CreateKey(u"PROJECT", u"GUID", u"{3F0E6A52-8C1D-4B7E-9A35-6D2F41C0B8E7}", missing, missing);
    project->CreateKey(u"PROJECT", u"Key", u"1", missing, missing);
    project->CreateKey(u"ODBC", u"DRIVER", u"SQLite3", missing, missing);
    project->CreateKey(u"ODBC", u"Database", String::fromUtf8(scratch.host("demo.db")), missing, missing);
    project->CreateKey(u"ODBC", u"StripTrailingZero", u"1", missing, missing);
    project->Save(u"");

    std::string connection =
        files->BuildConnectionStringFromPath(scratch.path("demo.VLS"), u"TOKEN", u"", u"", false, 7).toUtf8();
    ASSERT_NE(connection.find("VLGUID={3F0E6A52"), std::string::npos);
    ASSERT_NE(connection.find("ENCRYPTED=True;"), std::string::npos);

    const Handle environment(SQL_HANDLE_ENV, nullptr);
    const Handle database(SQL_HANDLE_DBC, environment);
    ASSERT_TRUE(database.succeeded(SQLDriverConnect(database, nullptr, characters(connection), SQL_NTS,
                                                    nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT)));
    for (std::string statement : {"CREATE TABLE requirement (id INTEGER, title TEXT)",
                                  "INSERT INTO requirement VALUES (4711, 'The lamp lights')"}) {
        const Handle run(SQL_HANDLE_STMT, database);
        ASSERT_TRUE(run.succeeded(SQLExecDirect(run, characters(statement), SQL_NTS)));
    }
    std::string query = "SELECT id, title FROM requirement";
    const Handle read(SQL_HANDLE_STMT, database);
    ASSERT_TRUE(read.succeeded(SQLExecDirect(read, characters(query), SQL_NTS)));
    ASSERT_TRUE(read.succeeded(SQLFetch(read)));
    SQLINTEGER id = 0;
    SQLCHAR title[64] = {};
    EXPECT_TRUE(read.succeeded(SQLGetData(read, 1, SQL_C_SLONG, &id, sizeof id, nullptr)));
    EXPECT_TRUE(read.succeeded(SQLGetData(read, 2, SQL_C_CHAR, title, sizeof title, nullptr)));
    EXPECT_EQ(id, 4711);
    EXPECT_STREQ(reinterpret_cast<const char*>(title), "The lamp lights");
    EXPECT_EQ(SQLFetch(read), SQL_NO_DATA);
}

} // namespace
} // namespace vlgs::test
