#include "host/services/preferences.h"

#include "host/base/convert.h"
#include "host/base/diagnostics.h"
#include "host/services/atomic_file_p.h"
#include "host/services/clock.h"
#include "host/services/user_folders.h"

#include <cstdio>
#include <limits>
#include <stdexcept>
#include <string>
#include <unistd.h>

namespace wainscot {

namespace {

constinit EditorPreferences* liveStore = nullptr;
constexpr std::size_t maxFileSize = std::size_t(64) * 1024 * 1024;
constexpr int maxDamagedFiles = 100;

std::optional<int> asInt(JsonValue const& value) {
    std::optional<std::int64_t> const number = value.asInteger();
    using Limits = std::numeric_limits<int>;
    if (!number || *number < Limits::min() || *number > Limits::max()) return {};
    return static_cast<int>(*number);
}

bool isUTF8(LightweightString<char> const& text) {
    return toUTF8(fromUTF8(text)) == text;
}

/// A new name for a damaged file, so that earlier damaged files are kept.
LightweightString<char> nameForDamaged(LightweightString<char> const& path) {
    LightweightString<char> name = path + ".damaged";
    for (int i = 2; access(name.c_str(), F_OK) == 0 && i <= maxDamagedFiles; ++i)
        name = path + ".damaged-" + StringFromInteger(i);
    return name;
}

} // namespace

EditorPreferences::EditorPreferences(Narrow const& programName, Storage storage) : storage_(storage) {
    if (liveStore) throw std::logic_error("wainscot: only one host may live at a time");
    liveStore = this;
    if (storage == Storage::file) folder_ = getConfigFolder(programName);
}

EditorPreferences::~EditorPreferences() {
    flush();
    liveStore = nullptr;
}

EditorPreferences* EditorPreferences::current() {
    return liveStore;
}

bool EditorPreferences::setFolder(Narrow const& folder) {
    if (loaded_) return false;
    folder_ = folder;
    return true;
}

EditorPreferences::Narrow EditorPreferences::filePath() const {
    return folder_.empty() ? Narrow() : folder_ + "/preferences.json";
}

void EditorPreferences::load() {
    if (loaded_) return;
    loaded_ = true;
    if (folder_.empty()) {
        if (storage_ == Storage::file)
            LogBoth("preferences: the program has no name or the user no home, so that none are kept");
        return;
    }
    FolderLock const lock(folder_);
    if (std::optional<JsonValue> stored = readStored()) values_ = std::move(*stored);
}

std::optional<JsonValue> EditorPreferences::readStored() {
    FileBytes const file = readWholeFile(filePath(), maxFileSize);
    if (file.state == FileBytes::State::absent) return JsonValue::object();
    if (file.state == FileBytes::State::failed) {
        fail("cannot be read", file.message);
        return {};
    }
    ParsedJson parsed = parseJson(file.bytes.view());
    if (parsed.value && parsed.value->isObject()) return std::move(*parsed.value);
    Narrow why = parsed.value ? Narrow("it holds no settings") : parsed.message;
    if (!parsed.value) why += ", line " + StringFromInteger(parsed.line);
    if (!setAside(why)) return {};
    return JsonValue::object();
}

bool EditorPreferences::setAside(Narrow const& why) {
    Narrow const name = nameForDamaged(filePath());
    if (std::rename(filePath().c_str(), name.c_str()) != 0)
        return fail("is damaged and cannot be set aside", why);
    LogBoth("preferences: %s is damaged (%s); it is kept as %s", filePath().c_str(), why.c_str(),
            name.c_str());
    return true;
}

bool EditorPreferences::fail(char const* what, Narrow const& why) {
    if (!reported_) LogBoth("preferences: %s %s (%s)", filePath().c_str(), what, why.c_str());
    reported_ = true;
    return false;
}

JsonValue const& EditorPreferences::value(Narrow const& key) {
    load();
    return values_.member(key);
}

void EditorPreferences::setValue(Narrow const& key, JsonValue value) {
    load();
    if (!isUTF8(key)) {
        Diagnostics::count("preference key is no UTF-8", key.c_str());
        return;
    }
    if (values_.member(key) == value) return;
    noteChange(key, value.isNull() ? values_.erase(key) : values_.set(key, std::move(value)));
}

void EditorPreferences::setEntry(Narrow const& key, Narrow const& entry, JsonValue value) {
    load();
    if (!isUTF8(key) || !isUTF8(entry)) {
        Diagnostics::count("preference key is no UTF-8", key.c_str());
        return;
    }
    if (values_.member(key).member(entry) == value) return;
    noteChange(key, value.isNull() ? values_.eraseWithin(key, entry)
                                   : values_.setWithin(key, entry, std::move(value)));
}

void EditorPreferences::noteChange(Narrow const& key, bool done) {
    if (!done) {
        Diagnostics::count("preference refused", key.c_str());
        return;
    }
    if (folder_.empty()) return;
    changed_.insert(key);
    if (!dueAt_) dueAt_ = service_get_msecs() + writeDelay;
}

JsonValue EditorPreferences::merged(JsonValue stored) const {
    for (Narrow const& key : changed_) {
        if (values_.has(key))
            stored.set(key, values_.member(key));
        else
            stored.erase(key);
    }
    return stored;
}

bool EditorPreferences::flush() {
    dueAt_.reset();
    if (changed_.empty()) return true;
    Narrow problem = makeFolders(folder_);
    if (!problem.empty()) return fail("cannot be written", problem);
    FolderLock const lock(folder_);
    bool const wasThere = access(filePath().c_str(), F_OK) == 0;
    std::optional<JsonValue> stored = readStored();
    if (!stored) return false;
    // A file that has gone or was damaged meanwhile is written again from all known settings.
    bool const isThere = wasThere && access(filePath().c_str(), F_OK) == 0;
    JsonValue all = isThere ? merged(std::move(*stored)) : values_;
    problem = writeFileAtomically(filePath(), (all.write(2) + "\n").view());
    if (!problem.empty()) return fail("cannot be written", problem);
    values_ = std::move(all);
    changed_.clear();
    reported_ = false;
    return true;
}

void EditorPreferences::writeIfDue() {
    if (dueAt_ && service_get_msecs() >= *dueAt_) flush();
}

bool EditorPreferences::getPreference(Narrow const& key, bool otherwise) {
    return value(key).asBool().value_or(otherwise);
}

int EditorPreferences::getPreference(Narrow const& key, int otherwise) {
    return asInt(value(key)).value_or(otherwise);
}

double EditorPreferences::getPreference(Narrow const& key, double otherwise) {
    return value(key).asNumber().value_or(otherwise);
}

EditorPreferences::Narrow EditorPreferences::getPreference(Narrow const& key, Narrow const& otherwise) {
    return value(key).asText().value_or(otherwise);
}

EditorPreferences::Narrow EditorPreferences::getPreference(Narrow const& key, char const* otherwise) {
    return getPreference(key, Narrow(otherwise));
}

EditorPreferences::Wide EditorPreferences::getPreference(Narrow const& key, Wide const& otherwise) {
    return value(key).asWideText().value_or(otherwise);
}

EditorPreferences::Wide EditorPreferences::getPreference(Narrow const& key, wchar_t const* otherwise) {
    return getPreference(key, Wide(otherwise));
}

XY<int> EditorPreferences::getPreference(Narrow const& key, XY<int> const& otherwise) {
    JsonValue const& held = value(key);
    std::optional<int> const x = asInt(held.at(0));
    std::optional<int> const y = asInt(held.at(1));
    return held.size() == 2 && x && y ? XY<int>(*x, *y) : otherwise;
}

void EditorPreferences::setPreference(Narrow const& key, Narrow const& value) {
    Narrow const valid = toUTF8(fromUTF8(value));
    if (!(valid == value)) Diagnostics::count("preference is no UTF-8", key.c_str());
    setValue(key, JsonValue(valid));
}

void EditorPreferences::setPreference(Narrow const& key, XY<int> const& value) {
    JsonValue pair = JsonValue::array();
    pair.add(JsonValue(value.x));
    pair.add(JsonValue(value.y));
    setValue(key, std::move(pair));
}

EditorPreferences& prefs() {
    if (!liveStore) throw std::logic_error("wainscot: no host lives");
    return *liveStore;
}

int config_int(char const* key, int otherwise) {
    if (!liveStore) return otherwise;
    std::optional<bool> const truth = liveStore->value(key).asBool();
    return truth ? *truth : liveStore->getPreference(key, otherwise);
}

double config_double(char const* key, double otherwise) {
    return liveStore ? liveStore->getPreference(key, otherwise) : otherwise;
}

} // namespace wainscot
