#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

/// A file of settings as a text in memory, changed line by line in the plainest way.
class SettingsModel {
  public:
    std::string content;

    std::optional<std::size_t> find(std::string_view category) const {
        auto const header = headerAt(category);
        return header ? std::optional(header->begin) : std::nullopt;
    }
    std::optional<std::string> value(std::string_view category, std::string_view name) const {
        auto const line = valueAt(category, name);
        return line ? std::optional(std::string(line->value)) : std::nullopt;
    }
    bool addCategory(std::string_view category) {
        if (category.empty() || headerOf(category).size() > 97 || find(category)) return false;
        change(content.size(), content.size(), '\n' + headerOf(category) + '\n');
        return true;
    }
    bool deleteCategory(std::string_view category) {
        auto const header = headerAt(category);
        if (!header) return false;
        std::size_t end = content.size() - 1;
        for (auto line = lineAt(header->end); line; line = lineAt(line->end))
            if (line->text.starts_with('[')) {
                end = line->begin;
                break;
            }
        change(header->begin, end, "");
        return true;
    }
    bool addValue(std::string_view category, std::string_view name, std::string_view value) {
        auto const header = headerAt(category);
        std::string const line = lineOf(name, value);
        if (!header || line.size() > 1023 || valueAt(category, name)) return false;
        change(header->end, header->end, line);
        return true;
    }
    bool setValue(std::string_view category, std::string_view name, std::string_view value) {
        return lineOf(name, value).size() <= 1023 && deleteValue(category, name) &&
               addValue(category, name, value);
    }
    bool deleteValue(std::string_view category, std::string_view name) {
        if (!headerAt(category)) return false;
        if (auto const line = valueAt(category, name)) change(line->begin, line->end, "");
        return true;
    }
    void addProgram(std::string const &program, std::string_view version, std::string_view path) {
        setValue("Programs", program, path);
        setValue("Programs", program + "_Version", version);
    }
    bool deleteProgram(std::string const &program) {
        return deleteValue("Programs", program) && deleteValue("Programs", program + "_Version");
    }

  private:
    struct Line {
        std::size_t begin, end;
        std::string_view text, value;
    };

    static std::string headerOf(std::string_view category) {
        std::string const opening = category.starts_with('[') ? "" : "[";
        std::string const closing = category.ends_with(']') ? "" : "]";
        return opening + std::string(category) + closing;
    }
    static std::string lineOf(std::string_view name, std::string_view value) {
        return std::string(name) + '=' + std::string(value) + '\n';
    }

    void change(std::size_t begin, std::size_t end, std::string const &text) {
        content.replace(begin, end - begin, text);
        std::erase(content, '\0');
    }

    // The line at `begin`: 1023 characters at most, cut at a NUL.
    std::optional<Line> lineAt(std::size_t begin) const {
        if (begin >= content.size()) return {};
        std::string_view line = std::string_view(content).substr(begin, 1023);
        std::size_t end = begin + line.size();
        if (auto const newline = line.find('\n'); newline != line.npos) {
            line = line.substr(0, newline);
            end = begin + newline + 1;
        } else if (line.size() == 1023 && end < content.size() && content[end] == '\n') {
            ++end;
        }
        return Line{begin, end, line.substr(0, line.find('\0')), ""};
    }
    std::optional<Line> headerAt(std::string_view category) const {
        std::string const header = headerOf(category);
        if (category.empty() || header.size() > 99) return {};
        for (auto line = lineAt(0); line; line = lineAt(line->end))
            if (line->text.starts_with(header)) return line;
        return {};
    }
    std::optional<Line> valueAt(std::string_view category, std::string_view name) const {
        auto line = headerAt(category);
        if (!line) return {};
        while ((line = lineAt(line->end)) && !line->text.starts_with('[')) {
            std::string_view rest = line->text;
            rest.remove_prefix(std::min(rest.find_first_not_of('='), rest.size()));
            std::size_t const equals = rest.find('=');
            if (equals == rest.npos || rest.substr(0, equals) != name) continue;
            line->value = rest.substr(equals + 1);
            if (!line->value.empty()) return line;
        }
        return {};
    }
};
