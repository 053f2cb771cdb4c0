#include "store/UserFiles.h"

#include <soci/soci.h>

namespace ipncsdk::store {

std::vector<UserFile> filesOf(soci::session& sql, AccountId account, const std::string& kind) {
    UserFile row;
    row.account = account;
    row.kind = kind;
    soci::statement statement =
        (sql.prepare << "select filename, content, size from userfiles where accountid = :account and kind = :kind"
                        " order by filename",
         soci::into(row.name), soci::into(row.content), soci::into(row.size), soci::use(account, "account"),
         soci::use(kind, "kind"));
    statement.execute();
    std::vector<UserFile> files;
    while (statement.fetch())
        files.push_back(row);
    return files;
}

std::optional<UserFile> userFile(soci::session& sql, AccountId account, const std::string& kind,
                                 const std::string& name) {
    UserFile file;
    file.account = account;
    file.kind = kind;
    sql << "select filename, content, size from userfiles"
           " where accountid = :account and kind = :kind and filename = :name",
        soci::into(file.name), soci::into(file.content), soci::into(file.size), soci::use(account, "account"),
        soci::use(kind, "kind"), soci::use(name, "name");
    return sql.got_data() ? std::make_optional(file) : std::nullopt;
}

void insertUserFile(soci::session& sql, const UserFile& file) {
    sql << "insert into userfiles (accountid, kind, filename, content, size)"
           " values (:account, :kind, :name, :content, :size)",
        soci::use(file.account, "account"), soci::use(file.kind, "kind"), soci::use(file.name, "name"),
        soci::use(file.content, "content"), soci::use(file.size, "size");
}

void removeUserFile(soci::session& sql, const UserFile& file) {
    sql << "delete from userfiles where accountid = :account and kind = :kind and filename = :name",
        soci::use(file.account, "account"), soci::use(file.kind, "kind"), soci::use(file.name, "name");
}

std::set<std::string> usedContents(soci::session& sql) {
    std::string row;
    soci::statement statement =
        (sql.prepare << "select content from maps union select content from userfiles", soci::into(row));
    statement.execute();
    std::set<std::string> contents;
    while (statement.fetch())
        contents.insert(row);
    return contents;
}

bool isContentUsed(soci::session& sql, const std::string& content) {
    long long count = 0;
    sql << "select (select count(*) from maps where content = :content)"
           " + (select count(*) from userfiles where content = :content)",
        soci::into(count), soci::use(content, "content");
    return count > 0;
}

} // namespace ipncsdk::store
