#include "store/Schema.h"

#include <soci/soci.h>

#include <array>

namespace ipncsdk::store {

namespace {

// Ids are bigint: with a plain integer the connection's library cuts wide values.
constexpr std::array statementsOfVersion1 = {
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
    // kept here, "net" one that an account added. configgroup is the group that the file named when the camera was
    // last put into it.
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

// Times are milliseconds since the beginning of 1970, UTC.
constexpr std::array statementsOfVersion2 = {
    // revision grows with every change that an account's clients must read; epoch with every change of its password,
    // which ends the sessions that were begun before.
    "alter table accounts add column countrycode varchar(8) not null default '86'",
    "alter table accounts add column revision bigint not null default 0",
    "alter table accounts add column epoch bigint not null default 0",

    // A computer without a row may sign in. epoch grows each time the account is unbound from it.
    "create table bindings ("
    " accountid bigint not null references accounts(id),"
    " computer varchar(64) not null,"
    " bound bigint not null,"
    " epoch bigint not null,"
    " primary key (accountid, computer))",

    // The code last sent to a number, as a keyed hash.
    "create table codes ("
    " phone varchar(32) not null primary key,"
    " purpose varchar(16) not null,"
    " countrycode varchar(8) not null,"
    " hash varchar(128) not null,"
    " sentat bigint not null,"
    " tries bigint not null)",

    // When codes were sent, for the limits; of the last day only.
    "create table codesends ("
    " phone varchar(32) not null,"
    " sentat bigint not null)",
    "create index codesendsofnumber on codesends (phone, sentat)",

    // A code that was entered rightly opens one submission, from the computer where it was entered.
    "create table checkedcodes ("
    " phone varchar(32) not null,"
    " purpose varchar(16) not null,"
    " computer varchar(64) not null,"
    " countrycode varchar(8) not null,"
    " checkedat bigint not null,"
    " primary key (phone, purpose, computer))",

    // content is the picture's file in base64.
    "create table headpictures ("
    " accountid bigint not null primary key references accounts(id),"
    " content text not null)",

    // What somebody must know who adds a device, owned now or not.
    "create table devicewords ("
    " ipncid varchar(256) not null primary key,"
    " word varchar(64) not null)",

    // Devices that no account owns.
    "create table waitingdevices ("
    " ipncid varchar(256) not null primary key,"
    " name varchar(256) not null,"
    " type varchar(32) not null,"
    " scene bigint not null,"
    " phase bigint not null,"
    " info text not null,"
    " interfaces text not null,"
    " extend text not null,"
    " video text not null)",

    // Addresses, user name and password of a network camera that an account added, sealed with the store's key.
    "create table netcameras ("
    " ipncid varchar(256) not null primary key references devices(ipncid),"
    " sealed text not null)",

    // Recorded scenes that an account of version 1 owns can be deleted now, and must be found again.
    "insert into devicewords (ipncid, word)"
    " select ipncid, 'word-' || lower(ipncid) from devices where origin = 'loop'",
};

constexpr std::array statementsOfVersion3 = {
    // Text messages: how many are left, whom to remind when few are, and at which number.
    "alter table accounts add column smsleft bigint not null default 200",
    "alter table accounts add column smsphone varchar(32) not null default ''",
    "alter table accounts add column smswarn bigint not null default 0",

    // document is the plan as clients sent it, with its id.
    "create table linkplans ("
    " id bigint not null primary key,"
    " ipncid varchar(256) not null references devices(ipncid),"
    " document text not null)",
    "create index linkplansofdevice on linkplans (ipncid)",

    // What was raised in the last days, so that every process can tell its client. savelog names the file of sensor
    // data, message is what clients are told. A device may be gone.
    "create table alarms ("
    " id bigint not null primary key,"
    " ipncid varchar(256) not null,"
    " madeat bigint not null,"
    " savelog varchar(128) not null,"
    " message text not null)",
    "create index alarmswithlog on alarms (savelog)",

    "create table reportrules ("
    " id bigint not null primary key,"
    " accountid bigint not null references accounts(id),"
    " document text not null)",

    // source names what the message was about, for the limit of one a minute.
    "create table smsrecords ("
    " id bigint not null primary key,"
    " accountid bigint not null references accounts(id),"
    " phone varchar(32) not null,"
    " name varchar(256) not null,"
    " madeat bigint not null,"
    " text varchar(2000) not null,"
    " kind varchar(16) not null,"
    " state varchar(16) not null,"
    " source varchar(300) not null)",
    "create index smsrecordsofaccount on smsrecords (accountid, id)",
    "create index smsrecordsofsource on smsrecords (phone, source, madeat)",
};

constexpr std::array statementsOfVersion4 = {
    // As revision, for what clients must read again of maps and of the account's files.
    "alter table accounts add column filerevision bigint not null default 0",

    // local: 1 for a picture, whose content is a name in the folder of contents, 0 for the map of the world. document
    // is what clients sent of the map.
    "create table maps ("
    " id bigint not null primary key,"
    " accountid bigint not null references accounts(id),"
    " local bigint not null,"
    " content varchar(80) not null,"
    " size bigint not null,"
    " document text not null)",
    "create index mapsofaccount on maps (accountid)",
    "create index mapsofcontent on maps (content)",

    "create table mapshares ("
    " mapid bigint not null references maps(id),"
    " friendid bigint not null references accounts(id),"
    " primary key (mapid, friendid))",

    // pid is a board's, 0 for the device itself. document is the marker as clients sent it.
    "create table mapmarkers ("
    " id bigint not null primary key,"
    " mapid bigint not null references maps(id),"
    " ipncid varchar(256) not null references devices(ipncid),"
    " pid bigint not null,"
    " document text not null)",
    "create index markersofmap on mapmarkers (mapid)",
    "create index markersofdevice on mapmarkers (ipncid)",

    // filename is the name as uploaded, content one in the folder of contents.
    "create table userfiles ("
    " accountid bigint not null references accounts(id),"
    " kind varchar(16) not null,"
    " filename varchar(512) not null,"
    " content varchar(80) not null,"
    " size bigint not null,"
    " primary key (accountid, kind, filename))",
    "create index filesofcontent on userfiles (content)",
};

// One statement a table that fails when a column is missing, and costs nothing when none is.
constexpr std::array probesOfVersion1 = {
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

constexpr std::array probesOfVersion2 = {
    "select count(*) from accounts where countrycode = '' and revision = 0 and epoch = 0",
    "select count(*) from bindings where accountid = 0 and computer = '' and bound = 0 and epoch = 0",
    "select count(*) from codes where phone = '' and purpose = '' and countrycode = '' and hash = '' and sentat = 0"
    " and tries = 0",
    "select count(*) from codesends where phone = '' and sentat = 0",
    "select count(*) from checkedcodes where phone = '' and purpose = '' and computer = '' and countrycode = ''"
    " and checkedat = 0",
    "select count(*) from headpictures where accountid = 0 and content = ''",
    "select count(*) from devicewords where ipncid = '' and word = ''",
    "select count(*) from waitingdevices where ipncid = '' and name = '' and type = '' and scene = 0 and phase = 0"
    " and info = '' and interfaces = '' and extend = '' and video = ''",
    "select count(*) from netcameras where ipncid = '' and sealed = ''",
};

constexpr std::array probesOfVersion3 = {
    "select count(*) from accounts where smsleft = 0 and smsphone = '' and smswarn = 0",
    "select count(*) from linkplans where id = 0 and ipncid = '' and document = ''",
    "select count(*) from alarms where id = 0 and ipncid = '' and madeat = 0 and savelog = '' and message = ''",
    "select count(*) from reportrules where id = 0 and accountid = 0 and document = ''",
    "select count(*) from smsrecords where id = 0 and accountid = 0 and phone = '' and name = '' and madeat = 0"
    " and text = '' and kind = '' and state = '' and source = ''",
};

constexpr std::array probesOfVersion4 = {
    "select count(*) from accounts where filerevision = 0",
    "select count(*) from maps where id = 0 and accountid = 0 and local = 0 and content = '' and size = 0"
    " and document = ''",
    "select count(*) from mapshares where mapid = 0 and friendid = 0",
    "select count(*) from mapmarkers where id = 0 and mapid = 0 and ipncid = '' and pid = 0 and document = ''",
    "select count(*) from userfiles where accountid = 0 and kind = '' and filename = '' and content = '' and size = "
    "0",
};

constexpr auto versionFact = "schemaversion";

} // namespace

void createSchema(soci::session& sql) {
    for (const char* statement : statementsOfVersion1)
        sql << statement;
    setFact(sql, versionFact, "1");
    migrateSchema(sql);
}

void migrateSchema(soci::session& sql) {
    const auto run = [&sql](const auto& statements) {
        for (const char* statement : statements)
            sql << statement;
    };
    // Writing first waits for another process that is doing the same; one that reads first could not write any more.
    const std::string name = versionFact;
    sql << "update facts set value = value where name = :name", soci::use(name, "name");
    const std::string version = fact(sql, versionFact);
    if (version == std::to_string(schemaVersion))
        return;
    if (version == "1")
        run(statementsOfVersion2);
    if (version == "1" || version == "2")
        run(statementsOfVersion3);
    run(statementsOfVersion4);
    setFact(sql, versionFact, std::to_string(schemaVersion));
}

SchemaState inspectSchema(soci::session& sql, std::string& fault) {
    const auto probe = [&sql](const auto& statements) {
        for (const char* statement : statements) {
            long long count = 0;
            sql << statement, soci::into(count);
        }
    };
    try {
        probe(probesOfVersion1);
        const std::string version = fact(sql, versionFact);
        if (version == "1")
            return SchemaState::Older;
        probe(probesOfVersion2);
        if (version == "2")
            return SchemaState::Older;
        probe(probesOfVersion3);
        if (version == "3")
            return SchemaState::Older;
        probe(probesOfVersion4);
        if (version == std::to_string(schemaVersion))
            return SchemaState::Current;
        fault = "its version is '" + version + "', not " + std::to_string(schemaVersion);
    } catch (const soci::soci_error& error) {
        fault = error.get_error_message();
    }
    return SchemaState::Faulty;
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

long long nextNumber(soci::session& sql, const std::string& name) {
    const std::string last = fact(sql, name);
    const long long number = (last.empty() ? 0 : std::stoll(last)) + 1;
    setFact(sql, name, std::to_string(number));
    return number;
}

} // namespace ipncsdk::store
