<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>varnel::screen</name>
    <message><source>&amp;First</source><translation>第一条(&amp;F)</translation></message>
    <message><source>&amp;Previous</source><translation>上一条(&amp;P)</translation></message>
    <message><source>&amp;Next</source><translation>下一条(&amp;N)</translation></message>
    <message><source>&amp;Last</source><translation>最后一条(&amp;L)</translation></message>
    <message><source>&amp;New</source><translation>新增(&amp;N)</translation></message>
    <message><source>&amp;Copy</source><translation>复制(&amp;C)</translation></message>
    <message><source>&amp;Delete</source><translation>删除(&amp;D)</translation></message>
    <message><source>&amp;Undo</source><translation>撤销(&amp;U)</translation></message>
    <message><source>&amp;Save</source><translation>保存(&amp;S)</translation></message>
    <message><source>&amp;Refresh</source><translation>刷新(&amp;R)</translation></message>
    <message><source>&amp;Query mode</source><translation>查询模式(&amp;Q)</translation></message>
    <message><source>&amp;Run query</source><translation>执行查询(&amp;R)</translation></message>
    <message><source>C&amp;ancel query</source><translation>取消查询(&amp;A)</translation></message>
    <message><source>Select &amp;all</source><translation>全选(&amp;A)</translation></message>
    <message><source>&amp;Invert selection</source><translation>反选(&amp;I)</translation></message>
    <message><source>C&amp;lear selection</source><translation>取消选择(&amp;L)</translation></message>
    <message><source>English</source><translation>English</translation></message>
    <message><source>中文</source><translation>中文</translation></message>
    <message><source>&amp;Quit</source><translation>退出(&amp;Q)</translation></message>
    <message><source>&amp;File</source><translation>文件(&amp;F)</translation></message>
    <message><source>&amp;Record</source><translation>记录(&amp;R)</translation></message>
    <message><source>&amp;Edit</source><translation>编辑(&amp;E)</translation></message>
    <message><source>&amp;Query</source><translation>查询(&amp;Q)</translation></message>
    <message><source>&amp;Selection</source><translation>选择(&amp;S)</translation></message>
    <message><source>&amp;Language</source><translation>语言(&amp;L)</translation></message>
    <message><source>Toolbar</source><translation>工具栏</translation></message>
    <message><source>%1 - varnel-screen</source><translation>%1 - varnel-screen</translation></message>
    <message><source>No rows</source><translation>无记录</translation></message>
    <message><source>Row %1 of %2</source><translation>第 %1 行，共 %2 行</translation></message>
    <message><source>Total: %1</source><translation>合计：%1</translation></message>
    <message><source>Selected %1 rows: %2</source><translation>已选 %1 行：%2</translation></message>
    <message><source>The current row has changes that are not saved.</source><translation>当前行有未保存的修改。</translation></message>
    <message><source>Save them before closing?</source><translation>关闭前保存吗？</translation></message>
    <message><source>Save</source><translation>保存</translation></message>
    <message><source>Discard</source><translation>放弃</translation></message>
    <message><source>Cancel</source><translation>取消</translation></message>
    <message><source>Password:</source><translation>密码：</translation></message>
</context>
</TS>
