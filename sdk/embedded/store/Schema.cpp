#include "store/Schema.h"

#include <soci/soci.h>

#include <array>

namespace ipncsdk::store {

namespace {

// Ids are bigint: with a plain integer the connection's library cuts wide values.
constexpr std::array tables = {
    "create table facts ("
    " name varchar(64) not null primary key,"
    " value varchar(1000) not null)",

    "create table accounts ("
    " id bigint not null primary key,"
    " phone varchar(32) not null unique,"
    " nickname varchar(256) not null,"
    " passwordhash varchar(200) not null)",

    // Friendship stands in both directions; the remark is the account's own note.
    "create table friends ("
    " accountid bigint not null references accounts(id),"
    " friendid bigint not null references accounts(id),"
    " remark varchar(256) not null,"
    " primary key (accountid, friendid))",

    "create table devicegroups ("
    " id bigint not null primary key,"
    " accountid bigint not null references accounts(id),"
    " name varchar(256) not null,"
    " position bigint not null)",

    // origin: "loop" is a recorded scene, "config" a network camera of the configuration file, whose address is not
    // kept here. configgroup is the group that the file named when the camera was last put into it.
    "create table devices ("
    " ipncid varchar(256) not null primary key,"
    " ownerid bigint not null references accounts(id),"
    " origin varchar(16) not null,"
    " name varchar(256) not null,"
    " type varchar(32) not null,"
    " online bigint not null,"
    " scene bigint not null,"
    " phase bigint not null,"
    " configgroup varchar(256) not null,"
    " info text not null,"
    " interfaces text not null,"
    " extend text not null,"
    " video text not null)",

    // Where an account sees a device, and under which name. Each device that an account owns or was given has
    // exactly one row for it.
    "create table placements ("
    " accountid bigint not null references accounts(id),"
    " ipncid varchar(256) not null references devices(ipncid),"
    " groupid bigint not null references devicegroups(id),"
    " position bigint not null,"
    " nickname varchar(256) not null,"
    " primary key (accountid, ipncid))",

    // rights is the "authority" object that the friend has on the device.
    "create table shares ("
    " ipncid varchar(256) not null references devices(ipncid),"
    " friendid bigint not null references accounts(id),"
    " rights text not null,"
    " primary key (ipncid, friendid))",

    // Only values that differ from the parameter table's defaults; value is JSON text.
    "create table parameters ("
    " ipncid varchar(256) not null references devices(ipncid),"
    " name varchar(64) not null,"
    " value text not null,"
    " primary key (ipncid, name))",
};

// One statement a table that fails when a column is missing, and costs nothing when none is.
constexpr std::array probes = {
    "select count(*) from facts where name = '' and value = ''",
    "select count(*) from accounts where id = 0 and phone = '' and nickname = '' and passwordhash = ''",
    "select count(*) from friends where accountid = 0 and friendid = 0 and remark = ''",
    "select count(*) from devicegroups where id = 0 and accountid = 0 and name = '' and position = 0",
    "select count(*) from devices where ipncid = '' and ownerid = 0 and origin = '' and name = '' and type = ''"
    " and online = 0 and scene = 0 and phase = 0 and configgroup = '' and info = '' and interfaces = ''"
    " and extend = '' and video = ''",
    "select count(*) from placements where accountid = 0 and ipncid = '' and groupid = 0 and position = 0"
    " and nickname = ''",
    "select count(*) from shares where ipncid = '' and friendid = 0 and rights = ''",
    "select count(*) from parameters where ipncid = '' and name = '' and value = ''",
};

constexpr auto versionFact = "schemaversion";

} // namespace

void createSchema(soci::session& sql) {
    for (const char* table : tables)
        sql << table;
    setFact(sql, versionFact, std::to_string(schemaVersion));
}

std::optional<std::string> schemaFault(soci::session& sql) {
    try {
        for (const char* probe : probes) {
            long long count = 0;
            sql << probe, soci::into(count);
        }
        const std::string version = fact(sql, versionFact);
        if (version != std::to_string(schemaVersion))
            return "its version is '" + version + "', not " + std::to_string(schemaVersion);
    } catch (const soci::soci_error& error) {
        return error.get_error_message();
    }
    return std::nullopt;
}

std::string fact(soci::session& sql, const std::string& name) {
    std::string value;
    sql << "select value from facts where name = :name", soci::into(value), soci::use(name, "name");
    return value;
}

void setFact(soci::session& sql, const std::string& name, const std::string& value) {
    sql << "delete from facts where name = :name", soci::use(name, "name");
    sql << "insert into facts (name, value) values (:name, :value)", soci::use(name, "name"),
        soci::use(value, "value");
}

} // namespace ipncsdk::store
