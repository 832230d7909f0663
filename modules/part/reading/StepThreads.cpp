#include "StepThreads.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <unordered_map>
#include <unordered_set>

#include "StepText.h"
#include "ThreadText.h"

namespace corvane::part::reading {
namespace {

/// A file may repeat itself. No honest one has so many threads or long ways from text to face.
constexpr std::size_t kMostThreads = 10'000, kMostSteps = 1'000'000;
constexpr std::size_t kLongestText = 200;

enum class Kind {
    Face,
    Item,            // a text of a representation
    Representation,  // (name, items, context)
    Meaning,         // a property or dimension, its representation
    Property,        // what it is of
    Dimension,       // the aspect
    Use,             // an aspect, its representation, the faces
    Relation,        // an aspect, one of its parts
    Annotation,      // what it is made of
    Shown,           // an aspect, its model, the annotation
    Located          // an annotation, its model
};

struct Node {
    Kind kind = Kind::Face;
    std::vector<std::uint64_t> references;
};

std::optional<Kind> kindOf(const StepRecord& record) {
    struct Row {
        std::string_view keyword;
        Kind kind;
    };
    static constexpr Row kRows[]{{"ADVANCED_FACE", Kind::Face},
                                 {"FACE_SURFACE", Kind::Face},
                                 {"DESCRIPTIVE_REPRESENTATION_ITEM", Kind::Item},
                                 {"REPRESENTATION", Kind::Representation},
                                 {"SHAPE_REPRESENTATION", Kind::Representation},
                                 {"SHAPE_REPRESENTATION_WITH_PARAMETERS", Kind::Representation},
                                 {"SHAPE_DIMENSION_REPRESENTATION", Kind::Representation},
                                 {"PROPERTY_DEFINITION_REPRESENTATION", Kind::Meaning},
                                 {"SHAPE_DEFINITION_REPRESENTATION", Kind::Meaning},
                                 {"DIMENSIONAL_CHARACTERISTIC_REPRESENTATION", Kind::Meaning},
                                 {"PROPERTY_DEFINITION", Kind::Property},
                                 {"PRODUCT_DEFINITION_SHAPE", Kind::Property},
                                 {"DIMENSIONAL_SIZE", Kind::Dimension},
                                 {"ANGULAR_SIZE", Kind::Dimension},
                                 {"GEOMETRIC_ITEM_SPECIFIC_USAGE", Kind::Use},
                                 {"ITEM_IDENTIFIED_REPRESENTATION_USAGE", Kind::Use},
                                 {"SHAPE_ASPECT_RELATIONSHIP", Kind::Relation},
                                 {"SHAPE_DEFINING_RELATIONSHIP", Kind::Relation},
                                 {"FEATURE_COMPONENT_RELATIONSHIP", Kind::Relation},
                                 {"COMPOSITE_TEXT", Kind::Annotation},
                                 {"ANNOTATION_OCCURRENCE", Kind::Annotation},
                                 {"ANNOTATION_TEXT_OCCURRENCE", Kind::Annotation},
                                 {"TESSELLATED_ANNOTATION_OCCURRENCE", Kind::Annotation},
                                 {"DRAUGHTING_CALLOUT", Kind::Annotation},
                                 {"LEADER_DIRECTED_CALLOUT", Kind::Annotation},
                                 {"DRAUGHTING_MODEL_ITEM_ASSOCIATION", Kind::Shown},
                                 {"CHARACTERIZED_ITEM_WITHIN_REPRESENTATION", Kind::Located}};
    for (const Row& row : kRows)
        if (record.is(row.keyword)) return row.kind;
    return std::nullopt;
}

struct Candidate {
    std::uint64_t number;
    Thread thread;
};

/// What an instance says of a thread in one of its texts.
std::optional<Thread> threadOf(const StepRecord& record) {
    Thread thread;
    std::optional<Designation> found;
    // A name of a face or of an aspect is any label; a property says what it says.
    const bool value = record.is("DESCRIPTIVE_REPRESENTATION_ITEM");
    for (const std::string_view raw : record.texts) {
        if (raw.size() > 8 * kLongestText) continue;
        std::string text = decodeStepText(raw, kLongestText);
        found = threadIn(text, value);
        if (!found) continue;
        thread.designation = found->text;
        thread.diameter = found->diameter;
        thread.pitch = found->pitch;
        thread.text = std::move(text);
        return thread;
    }
    return std::nullopt;
}

/// How the instances of a file refer to each other, as far as it leads from texts to faces.
class Relations {
public:
    void add(const StepRecord& record) {
        const std::optional<Kind> kind = kindOf(record);
        if (!kind) return;
        nodes_[record.number] = {
            *kind, *kind == Kind::Face ? std::vector<std::uint64_t>() : record.references};
    }

    void close() {
        for (const auto& [number, node] : nodes_)
            for (const std::uint64_t reference : node.references)
                users_[reference].push_back(number);
        for (auto& [number, users] : users_)
            std::sort(users.begin(), users.end());
    }

    /// The faces that a text of the instance is about; where they were found in `source`.
    std::vector<std::uint64_t> facesOf(std::uint64_t number, ThreadSource& source) {
        faces_.clear();
        seen_.clear();
        open_ = {number};
        source = ThreadSource::Aspect;
        if (const Node* node = find(number)) source = sourceOf(node->kind);
        while (!open_.empty() && steps_ < kMostSteps) {
            const std::uint64_t next = open_.back();
            open_.pop_back();
            if (seen_.insert(next).second) visit(next, source);
        }
        return {faces_.begin(), faces_.end()};
    }

private:
    static ThreadSource sourceOf(Kind kind) {
        switch (kind) {
            case Kind::Face:
                return ThreadSource::Face;
            case Kind::Item:
            case Kind::Property:
                return ThreadSource::Property;
            case Kind::Dimension:
                return ThreadSource::Dimension;
            case Kind::Annotation:
                return ThreadSource::Annotation;
            default:
                return ThreadSource::Aspect;
        }
    }

    [[nodiscard]] const Node* find(std::uint64_t number) const {
        const auto it = nodes_.find(number);
        return it == nodes_.end() ? nullptr : &it->second;
    }
    [[nodiscard]] static std::uint64_t at(const Node& node, std::size_t place) {
        return place < node.references.size() ? node.references[place] : 0;
    }

    void visit(std::uint64_t number, ThreadSource& source) {
        ++steps_;
        const Node* node = find(number);
        if (node != nullptr) {
            if (node->kind == Kind::Face) {
                faces_.insert(number);
                return;
            }
            if (node->kind == Kind::Dimension) source = ThreadSource::Dimension;
            if (node->kind == Kind::Located || node->kind == Kind::Annotation)
                source = ThreadSource::Annotation;
            if (node->kind == Kind::Property || node->kind == Kind::Dimension ||
                node->kind == Kind::Located)
                open_.push_back(at(*node, 0));
        }
        const auto users = users_.find(number);
        if (users == users_.end()) return;
        for (const std::uint64_t user : users->second) {
            ++steps_;
            follow(number, node, user, *find(user));
        }
    }

    /// From an instance to one that refers to it.
    void follow(std::uint64_t from, const Node* node, std::uint64_t number, const Node& user) {
        const bool ofText = node != nullptr && node->kind == Kind::Item;
        const bool isFirst = at(user, 0) == from;
        switch (user.kind) {
            case Kind::Representation:
                if (ofText) open_.push_back(number);
                break;
            case Kind::Meaning:
                if (!isFirst) open_.push_back(at(user, 0));
                break;
            case Kind::Annotation:
                open_.push_back(number);
                break;
            case Kind::Shown:
                if (!isFirst) open_.push_back(at(user, 0));
                break;
            case Kind::Relation:
                if (isFirst) open_.push_back(at(user, 1));
                break;
            case Kind::Use:
                if (isFirst) addFaces(user, 2);
                break;
            case Kind::Property:
                if (isFirst) addShape(number);
                break;
            default:
                break;
        }
    }

    void addFaces(const Node& node, std::size_t first) {
        for (std::size_t i = first; i < node.references.size(); ++i) {
            ++steps_;
            const Node* face = find(node.references[i]);
            if (face != nullptr && face->kind == Kind::Face) faces_.insert(node.references[i]);
        }
    }

    /// The faces of the shape that a property of an aspect is.
    void addShape(std::uint64_t property) {
        const auto users = users_.find(property);
        if (users == users_.end()) return;
        for (const std::uint64_t user : users->second) {
            const Node& meaning = *find(user);
            if (meaning.kind != Kind::Meaning || at(meaning, 0) != property) continue;
            if (const Node* shape = find(at(meaning, 1));
                shape != nullptr && shape->kind == Kind::Representation)
                addFaces(*shape, 0);
        }
    }

    std::unordered_map<std::uint64_t, Node> nodes_;
    std::unordered_map<std::uint64_t, std::vector<std::uint64_t>> users_;
    std::set<std::uint64_t> faces_;
    std::unordered_set<std::uint64_t> seen_;
    std::vector<std::uint64_t> open_;
    std::size_t steps_ = 0;
};

}  // namespace

std::vector<StepThread> stepThreads(std::string_view text) {
    std::vector<Candidate> candidates;
    eachStepRecord(text, [&](const StepRecord& record) {
        if (candidates.size() >= kMostThreads) return;
        if (std::optional<Thread> thread = threadOf(record))
            candidates.push_back({record.number, std::move(*thread)});
    });
    std::vector<StepThread> threads;
    if (candidates.empty()) return threads;
    Relations relations;
    eachStepRecord(text, [&](const StepRecord& record) { relations.add(record); });
    relations.close();
    // Many programs say it twice, as a dimension and as its picture.
    std::set<std::pair<std::string, std::vector<std::uint64_t>>> known;
    for (Candidate& candidate : candidates) {
        StepThread found{std::move(candidate.thread), {}};
        found.faces = relations.facesOf(candidate.number, found.thread.source);
        if (!found.faces.empty() && known.emplace(found.thread.designation, found.faces).second)
            threads.push_back(std::move(found));
    }
    return threads;
}

}  // namespace corvane::part::reading
