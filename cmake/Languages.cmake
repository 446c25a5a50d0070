# The languages of the module's texts, one a line, the module's own first: each has its file of texts, resources/xx-XX.rh, and
# becomes xx-XX/korihvui.dll.mui.
set(KORIHVUI_LANGUAGES
    en-US
    de-DE
    fr-FR
    es-ES
    it-IT
    pt-BR
    ja-JP
    zh-CN
    ko-KR
)
