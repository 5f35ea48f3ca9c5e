<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>varnel::qt</name>
    <message><source>modified, not saved</source><translation>已修改，未保存</translation></message>
    <message><source>new, not saved</source><translation>新增，未保存</translation></message>
    <message><source>copied, not saved</source><translation>复制，未保存</translation></message>
    <message><source>a deletion before this row is not saved</source><translation>此行之前的删除未保存</translation></message>
    <message><source>locked</source><translation>已锁定</translation></message>
    <message><source>current row</source><translation>当前行</translation></message>
    <message><source>Loading</source><translation>正在加载</translation></message>
    <message><source>Cancel</source><translation>取消</translation></message>
    <message><source>Loading %1: %2 rows read</source><translation>正在加载 %1：已读取 %2 行</translation></message>
    <message><source>Loading cancelled</source><translation>加载已取消</translation></message>
    <message><source>Keep editing</source><translation>继续编辑</translation></message>
    <message><source>Write mine</source><translation>写入我的</translation></message>
    <message><source>Take theirs</source><translation>采用对方的</translation></message>
    <message><source>Field</source><translation>字段</translation></message>
    <message><source>You typed</source><translation>您输入的</translation></message>
    <message><source>The database holds now</source><translation>数据库中现在的值</translation></message>
    <message><source>(deleted)</source><translation>（已删除）</translation></message>
    <message><source>(not found)</source><translation>（未找到）</translation></message>
    <message><source>Someone else changed or deleted this row after you loaded it; a table without a key cannot tell which.</source><translation>在您加载之后，其他人修改或删除了这一行；没有关键字的表无法区分两者。</translation></message>
    <message><source>Someone else changed this row</source><translation>其他人修改了这一行</translation></message>
    <message><source>Someone else deleted this row after you loaded it.</source><translation>在您加载之后，其他人删除了这一行。</translation></message>
    <message><source>Someone else changed this row after you loaded it. Fields they changed are in bold.</source><translation>在您加载之后，其他人修改了这一行。他们修改的字段以粗体显示。</translation></message>
</context>
</TS>
