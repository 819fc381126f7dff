"""The languages of the made-up journals: their words, and the words that are searched for."""

from typing import NamedTuple


class Marker(NamedTuple):
    """A word that is in a known share of the entries, and its form in the query: often in another letter case."""

    written: str
    query: str


class Language(NamedTuple):
    """One language. Accents are composed."""

    name: str
    code: str  # for the front matter
    rare: Marker  # in one entry of a thousand
    common: Marker  # in three entries of ten
    absent: str  # in none
    words: str  # parted by white space, frequent ones first; none of the above
    full_stop: str = "."
    blank: str = " "  # between words
    decomposed: bool = False  # whether accents are written as separate marks


ENGLISH = Language("english", "en", Marker("Kingfisher", "kingfisher"), Marker("harbour", "HARBOUR"), "zeppelin", """
the and to of a in it was that for on with we my at had but not this so from all when then up out about she
they were there after before again some into over time day morning evening night home house walk walked
talked work working long little good better new old first last still found thought think know want wanted
need feel felt took made make came went going back down through around water river street train kitchen
window table letter book books reading writing page pages notes coffee bread dinner breakfast soup apples
rain wind snow summer winter autumn spring light dark cold warm quiet tired happy busy slow early late
tomorrow yesterday week month year mother father sister brother friend friends children doctor meeting
project plan plans idea ideas question answer decision reason problem progress practice piano music song
film picture photograph colour paint bicycle journey mountain forest field stones birds swallows fox dog cat
neighbour market money ticket station office desk computer message telephone I I Anna Thomas Lisbon
Edinburgh Sunday Monday Friday April October can't didn't it's half-finished somewhere everything nothing
perhaps remember remembered beautiful strange familiar important necessary unexpectedly 3 12 2019 7:30
""")

GERMAN = Language("german", "de", Marker("Löwenzahn", "löwenzahn"), Marker("Straße", "STRASSE"), "möwenflügel", """
und die der ich das nicht wir ist war mit auf für über heute gestern morgen noch später schön früh Tür Küche
Bücher Gespräch Mädchen Großmutter Fuß weiß heiß draußen spazieren gegangen geschrieben gelesen Frühstück
Abendessen Gemüse Brötchen müde glücklich Zug Bahnhof Fluss Gärten Bäume Vögel Wörter Träume Nachmittag
Sonntag Zürich München Österreich Übung Äpfel Öl Entscheidung Geschwindigkeitsbegrenzung vielleicht zwischen
natürlich plötzlich endlich Gewitter
""")

FRENCH = Language("french", "fr", Marker("che\u0300vrefeuille", "CHÈVREFEUILLE"), Marker("Fore\u0302t", "forêt"), "éphémère", """
le la et les de des un une nous à était été où déjà après très journée matinée soirée mère père frère élève
école café thé pâtes gâteau fenêtre tête fête bête rêve même être façon garçon leçon français ça reçu Noël
naïf maïs hôtel côté bientôt août goût sûr île dîner connaître pensée idée année réunion décision problème
lumière rivière promenade toujours peut-être quelque chose demain hier soir matin pluie neige lettre livre
maison
""", decomposed=True)

GREEK = Language("greek", "el", Marker("Αλκυόνα", "αλκυόνα"), Marker("θάλασσα", "ΘΆΛΑΣΣΑ"), "κρόκος", """
και το να η ο είναι με για από στο δεν ήταν μου μας σήμερα χθες αύριο πρωί βράδυ σπίτι δρόμος δουλειά βιβλίο
γράμμα φίλος μητέρα πατέρας αδελφός ημέρα νύχτα χειμώνας καλοκαίρι βροχή ήλιος άνεμος ποτάμι δέντρα πουλιά
καφές ψωμί τραπέζι παράθυρο τρένο σταθμός Αθήνα Κυριακή Απρίλιος σκέψη ιδέα απόφαση πρόβλημα μουσική
τραγούδι ζωγραφική ποδήλατο ταξίδι βουνό ΐσως προϋπόθεση
""")

TURKISH = Language("turkish", "tr", Marker("ıhlamur", "ıhlamur"), Marker("Işıklar", "Işıklar"), "yalıçapkını", """
ve bir bu çok için ile gün sabah akşam gece ev yol iş bugün dün yarın güzel küçük büyük eski yeni kitap
mektup arkadaş anne baba kardeş yağmur rüzgâr kış yaz ilkbahar ağaç kuş deniz nehir köprü çay kahve ekmek
masa pencere tren istasyon İzmir Iğdır İyi Irmak sıcak sınıf kapı altı düşünce karar sorun müzik şarkı
bisiklet yolculuk dağ öğretmen çocuklar değil
""")

RUSSIAN = Language("russian", "ru", Marker("Зимородок", "зимородок"), Marker("берег", "БЕРЕГ"), "лаванда", """
и в не на я что с мы был была это как утром вечером ночью сегодня вчера завтра дом улица работа книга письмо
друг мама отец брат сестра день неделя месяц год зима лето осень весна дождь снег ветер солнце река лес
деревья птицы кофе хлеб стол окно поезд станция Москва Воскресенье Апрель мысль решение вопрос ответ музыка
песня ещё всё объявление съезд прогулка путешествие
""")

HINDI = Language("hindi", "hi", Marker("नीलकंठ", "नीलकंठ"), Marker("नदी", "नदी"), "कमल", """
और है में का की के मैं हम था थी आज कल सुबह शाम रात दिन घर सड़क काम किताब चिट्ठी मित्र माँ पिता भाई बहन
सप्ताह महीना साल सर्दी गर्मी बारिश हवा सूरज पेड़ पक्षी चाय रोटी मेज़ खिड़की रेलगाड़ी स्टेशन दिल्ली रविवार
विचार निर्णय प्रश्न उत्तर संगीत गाना साइकिल यात्रा पहाड़ अच्छा पुराना नया ज़रूरी
""", full_stop="।")

EMOJI = Language("emoji", "en", Marker("🦭", "🦭"), Marker("🌻", "🌻"), "🪗", """
the and so today we walked home with coffee ☕ 🙂 😀 🎉 ❤️ 👍🏽 👩‍👩‍👧 🧑🏿‍🚀 🏳️‍🌈 🇵🇹 🇯🇵 🌧️ ☀️ ⛰️ 🚲 🚆 📚 ✍🏻 🎹 🐈 🐕‍🦺 🍎
🥖 🍜 🕯️ 💤 really tired happy birthday dinner rain again tomorrow maybe good day 1️⃣ #️⃣
""", full_stop="!")

CHINESE = Language("chinese", "zh", Marker("翠鸟", "翠鸟"), Marker("河边", "河边"), "灯塔", """
我 的 了 是 在 我们 今天 昨天 明天 早上 晚上 去 来 回家 工作 学习 朋友 妈妈 爸爸 弟弟 姐姐 吃饭 咖啡 面包 苹果 下雨 下雪 风 太阳 月亮 树 花 书 信 写字 读书 音乐 电影 火车 车站
北京 上海 星期日 四月 时间 问题 回答 决定 计划 想法 慢慢 高兴 累 安静 漂亮 重要 可能 以后 以前 因为 所以 ， ， ，
""", full_stop="。", blank="")

JAPANESE = Language("japanese", "ja", Marker("カワセミ", "カワセミ"), Marker("海岸", "海岸"), "灯台", """
の は に を が で と も です ます した 私 今日 昨日 明日 朝 夜 家 仕事 勉強 友達 母 父 弟 姉 食べた 飲んだ コーヒー パン りんご 雨 雪 風 太陽 月 木 花 本 手紙 書いた 読んだ
音楽 映画 電車 駅 東京 京都 日曜日 四月 時間 問題 答え 決めた 計画 考え ゆっくり うれしい 疲れた 静か きれい 大切 たぶん 、 、
""", full_stop="。", blank="")

MIXED = (GERMAN, FRENCH, GREEK, TURKISH, RUSSIAN, HINDI, EMOJI)
CJK = (CHINESE, JAPANESE)
