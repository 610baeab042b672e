#include "ExchangeData.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

namespace ExchangeData {

namespace {

struct Language {
    const char* code;
    /** What words are made of. */
    const char* syllables;
    /** Between words. */
    const char* blank;
    /** Plural forms of whole numbers and fractions (CLDR). */
    const char* forms;
};

constexpr Language Languages[]{
    {"en", "a be can der en for ger hal in ken low mer not or pen quick ra ster to un ver wind y", " ", "one other"},
    {"ar", "ال با تا جا حر خي در را سا شم صو طر عل غا فق قد كت لم من نو هو وا يس", " ", "zero one two few many other"},
    {"cs", "a ně co dá ře je kol lé mů ný os po rů se ště tu ve žá zi", " ", "one few many other"},
    {"de", "ab be das ein für ge hal ich keit lo mäch nicht öff per ruh schaft tür ü ver wald zu", " ", "one other"},
    {"el", "α βο γή δε εν ζω ή θα ί κα λό με νε ξύ ο πα ρι στη τό υ φω χά ψη ώ", " ", "one other"},
    {"es", "a bos ción de el fue gue hí jo la mi ño os por que ra sé tú u ven ya", " ", "one many other"},
    {"fr", "à bre ce des é fi ge hu il je l'eau mon nous où pas que ré sur tou un vê y", " ", "one many other"},
    {"he", "א בא גד דל הי וח זה חל טו יש כל לא מי נו סד על פה צר קו רע של תו", " ", "one two other"},
    {"hi", "अ आप का गी घर चल जा टू डे ता दी न पा बा भी मे या रा ला वे शि स है", " ", "one other"},
    {"it", "a bel che dei è fio gli ho in la mon no o per qua ri so ti un va zio", " ", "one many other"},
    {"ja", "あ い か き 剣 国 さ し す 森 た ち の は 日 ま み 門 や ら り ル ー を ん 城", "、", "other"},
    {"ko", "가 나 다 라 마 바 사 아 자 차 카 타 파 하 검 문 숲 성 을 는 에 서", " ", "other"},
    {"pl", "a by cie dzi ę go i ją ko łą mi nie ó po rze się trz u wa żył", " ", "one few many other"},
    {"pt-BR", "a bem ção de é fo gui há isso já lá mão nós o por que rá são tu um você", " ", "one many other"},
    {"ru", "а бы вой где дом е жи за и кра лес мо не о по ры сто ты у фа хо цве че ша ю", " ", "one few many other"},
    {"sv", "att be de en för gå här i ja kan lä man nå och på r så till u vi å", " ", "one other"},
    {"th", "กา ขอ คน งา จะ ชา ดี ตา ทำ นี้ ปี พา มี ยา รู้ ลม ว่า สู่ ให้ อยู่", "", "other"},
    {"tr", "a bir ca da e ğı ge ha i ka lü mu ne ö par rı şi te u ver yı", " ", "one other"},
    {"uk", "а би від где дім є жи за ї кра ліс мо не о по ри сто ти у фа хо цві че ша ю", " ", "one few many other"},
    {"zh-CN", "山 水 火 门 剑 国 城 人 的 一 是 不 了 在 有 我 他 这 中 大 来 上 夜 风", "，", "other"},
};

constexpr const char* Namespaces[]{"translation", "items"};

constexpr const char* Names =
    "amber ash black bridge broken castle cold crown dark dawn deep dragon east ember fallen forest "
    "ghost gold hollow iron last light lost market moon night north old river salt silver "
    "stone storm sunken tower watch white wild winter wolf";

std::vector<std::string> split(const char* const words) {
    std::istringstream stream{words};
    std::vector<std::string> list;
    for(std::string word; stream >> word;) list.push_back(word);
    return list;
}

/* SplitMix64: each text has a sequence of its own, whatever was made before. */
class Numbers {
public:
    explicit Numbers(const std::uint64_t seed): _state{seed * 0x9e3779b97f4a7c15u + 1} {}

    unsigned below(const std::size_t limit) {
        _state += 0x9e3779b97f4a7c15u;
        std::uint64_t mixed = (_state ^ (_state >> 30)) * 0xbf58476d1ce4e5b9u;
        mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111ebu;
        return unsigned((mixed >> 33) % limit);
    }

private:
    std::uint64_t _state;
};

std::size_t characters(const std::string& text) {
    std::size_t count = 0;
    for(const char c: text) count += (c & 0xc0) != 0x80;
    return count;
}

/* 20 to 120 characters, some with what is interpolated and with what JSON escapes. */
std::string textOf(const Language& language, const std::vector<std::string>& syllables, Numbers numbers) {
    const std::size_t size = 20 + numbers.below(101);
    std::string text = numbers.below(10) == 0 ? "{{name}}" : numbers.below(30) == 0 ? "\"" + syllables[0] + '"' : "";
    std::size_t count = characters(text);
    for(;;) {
        std::string word = numbers.below(60) == 0 ? "\n" : language.blank;
        for(unsigned i = 1 + numbers.below(4); i; --i) word += syllables[numbers.below(syllables.size())];
        count += characters(word);
        if(count >= size) break;
        text += word;
    }
    return text + '.';
}

/* A name as programmers give them, of its own for each number. */
std::string nameOf(const int number) {
    static const std::vector<std::string> names = split(Names);
    const int count = int(names.size());
    std::string second = names[std::size_t(number / count % count)];
    second[0] = char(second[0] - 'a' + 'A');
    const int round = number / (count * count);
    return names[std::size_t(number % count)] + second + (round ? std::to_string(round + 1) : "");
}

/* The way to the text with a number, of those that make up a part of a game; elements of arrays are "[]". */
using Path = std::vector<std::string>;

Path dialogue(const int i) {
    const int line = i % 20;
    const std::string scene = "scene" + std::to_string(i / 20 % 20 + 1);
    if(line < 17) return {"dialogues", nameOf(i / 400), scene, "line" + std::to_string(line + 1)};
    return {"dialogues", nameOf(i / 400), scene, "choices", "[]"};
}

Path quest(const int i) {
    constexpr const char* Members[]{"title", "description", "hint"};
    const int member = i % 13;
    if(member < 3) return {"quests", nameOf(i / 13), Members[member]};
    return {"quests", nameOf(i / 13), "stages", "stage" + std::to_string((member - 1) / 2),
        member % 2 ? "title" : "description"};
}

Path menu(const int i) { return {"menus", nameOf(i / 40), nameOf(i / 2 % 20), i % 2 ? "tooltip" : "label"}; }

Path message(const int i) { return {"messages", nameOf(i)}; }

Path item(const int i) {
    constexpr const char* Members[]{"name", "description", "flavour", "useHint"};
    return {"kind" + std::to_string(i / 400 + 1), nameOf(i / 4), Members[i % 4]};
}

struct Part {
    int nameSpace;
    int percent;
    Path (*path)(int number);
};

constexpr Part Parts[]{{0, 33, dialogue}, {0, 13, quest}, {0, 7, menu}, {0, 5, message}, {1, 40, item}};

/* What is left are plural sets, of two forms in the default language. */
constexpr int PluralPercent = 2;

/* Puts a value behind all others, in the containers at the end of those that are there, or in new ones. */
void append(rapidjson::Document& document, const Path& path, const std::string& text) {
    auto& allocator = document.GetAllocator();
    const auto json = [&](const std::string& string) {
        return rapidjson::Value{string.data(), rapidjson::SizeType(string.size()), allocator};
    };
    rapidjson::Value* container = &document;
    for(std::size_t i = 0; i != path.size(); ++i) {
        const bool isLast = i + 1 == path.size();
        rapidjson::Value value = isLast
            ? json(text)
            : rapidjson::Value{path[i + 1] == "[]" ? rapidjson::kArrayType : rapidjson::kObjectType};
        if(path[i] == "[]") container->PushBack(value, allocator);
        else {
            const bool isThere =
                !isLast && container->MemberCount() && (container->MemberEnd() - 1)->name == path[i].c_str();
            if(!isThere) container->AddMember(json(path[i]), value, allocator);
            container = &(container->MemberEnd() - 1)->value;
        }
    }
}

void fill(File* const files, const Language& language, const int terms, const int edition) {
    const std::vector<std::string> syllables = split(language.syllables);
    const std::uint64_t first = (std::uint64_t(edition) << 40) + (std::uint64_t(&language - Languages) << 32);
    std::uint64_t number = 0;
    const auto text = [&] { return textOf(language, syllables, Numbers{first + number++}); };
    for(const Part& part: Parts)
        for(int i = 0; i != terms * part.percent / 100; ++i)
            append(files[part.nameSpace].document, part.path(i), text());
    for(int i = 0; i != terms * PluralPercent / 200; ++i)
        for(const std::string& form: split(language.forms))
            append(files[0].document, {"counters", nameOf(i) + '_' + form}, text());
}

}

std::string File::text() const {
    rapidjson::StringBuffer buffer;
    rapidjson::PrettyWriter writer{buffer};
    writer.SetIndent(' ', 2);
    document.Accept(writer);
    return std::string{buffer.GetString(), buffer.GetSize()} + '\n';
}

std::vector<File> make(const int terms, const int edition) {
    std::vector<File> files;
    for(const Language& language: Languages) {
        for(const char* const nameSpace: Namespaces)
            files.push_back(
                {std::string{language.code} + '/' + nameSpace + ".json", rapidjson::Document{rapidjson::kObjectType}});
        fill(&files[files.size() - std::size(Namespaces)], language, terms, edition);
    }
    return files;
}

void write(const std::vector<File>& files, const std::string& folder) {
    for(const File& file: files) {
        const std::filesystem::path path = folder + '/' + file.path;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream{path, std::ios::binary} << file.text();
    }
}

}
