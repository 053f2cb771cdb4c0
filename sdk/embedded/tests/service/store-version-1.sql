-- A store of version 1: the statements that made its tables, and a little content.
pragma journal_mode = wal;
begin;
create table facts (
    name varchar(64) not null primary key,
    value varchar(1000) not null);
create table accounts (
    id bigint not null primary key,
    phone varchar(32) not null unique,
    nickname varchar(256) not null,
    passwordhash varchar(200) not null);
create table friends (
    accountid bigint not null references accounts(id),
    friendid bigint not null references accounts(id),
    remark varchar(256) not null,
    primary key (accountid, friendid));
create table devicegroups (
    id bigint not null primary key,
    accountid bigint not null references accounts(id),
    name varchar(256) not null,
    position bigint not null);
create table devices (
    ipncid varchar(256) not null primary key,
    ownerid bigint not null references accounts(id),
    origin varchar(16) not null,
    name varchar(256) not null,
    type varchar(32) not null,
    online bigint not null,
    scene bigint not null,
    phase bigint not null,
    configgroup varchar(256) not null,
    info text not null,
    interfaces text not null,
    extend text not null,
    video text not null);
create table placements (
    accountid bigint not null references accounts(id),
    ipncid varchar(256) not null references devices(ipncid),
    groupid bigint not null references devicegroups(id),
    position bigint not null,
    nickname varchar(256) not null,
    primary key (accountid, ipncid));
create table shares (
    ipncid varchar(256) not null references devices(ipncid),
    friendid bigint not null references accounts(id),
    rights text not null,
    primary key (ipncid, friendid));
create table parameters (
    ipncid varchar(256) not null references devices(ipncid),
    name varchar(64) not null,
    value text not null,
    primary key (ipncid, name));
insert into facts values ('schemaversion', '1'), ('signedinonce', '1');
insert into accounts values (1, '13800138000', '老中心', 'HASH'), (2, '13900139000', '老周', 'HASH');
insert into friends values (1, 2, '老周'), (2, 1, '老中心');
insert into devicegroups values (1001, 1, '大门', 0), (1002, 2, '河道', 0);
insert into devices values
    ('CAM0001', 1, 'loop', '东大门', 'video', 1, 0, 37, '', '{"model":"CV-D200"}', '[]', '{"sublist":[]}', '{}'),
    ('porch', 1, 'config', '门口', 'video', 1, 0, 0, '', '{}', '[]', '{"sublist":[]}', '{}'),
    ('SPARE002', 2, 'loop', '河口', 'video', 1, 3, 5, '', '{}', '[]', '{"sublist":[]}', '{}');
insert into placements values (1, 'CAM0001', 1001, 0, '改过的名'), (2, 'CAM0001', 1002, 1, '东大门'),
    (1, 'porch', 1001, 1, '门口'), (2, 'SPARE002', 1002, 0, '河口');
insert into shares values ('CAM0001', 2, '{"video":true}');
insert into parameters values ('CAM0001', 'mirror', '1');
commit;
