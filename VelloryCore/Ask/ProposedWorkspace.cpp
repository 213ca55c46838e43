// SPDX-License-Identifier: Apache-2.0
#include "Ask/ProposedWorkspace.h"

#include "Workspaces/WindowTiling.h"

namespace vellory {

namespace {

json::Value schemaOf(ProposedWorkspace::Kind kind) {
    using enum ProposedWorkspace::Kind;
    switch (kind) {
    case text:
        return {{"type", "string"}};
    case texts:
        return {{"type", "array"}, {"items", {{"type", "string"}}}};
    case boolean:
        return {{"type", "boolean"}};
    case arrangement: {
        json::Value names = json::Value::array();
        for (const auto choice : {Arrangement::keep, Arrangement::focus, Arrangement::split,
                                  Arrangement::columns, Arrangement::grid}) {
            names.push_back(rawValue(choice));
        }
        return {{"type", "string"}, {"enum", names}};
    }
    }
    return {};
}

} // namespace

json::Value ProposedWorkspace::schema() {
    json::Value properties = json::Value::object();
    json::Value required = json::Value::array();
    for (const Field& field : fields) {
        json::Value property = schemaOf(field.kind);
        property["description"] = field.description;
        properties[std::string(field.name)] = std::move(property);
        required.push_back(field.name);
    }
    return {{"type", "object"},
            {"description", description},
            {"properties", std::move(properties)},
            {"required", std::move(required)},
            {"additionalProperties", false}};
}

std::expected<ProposedWorkspace, json::Error> ProposedWorkspace::parse(std::string_view answer) {
    if (answer.size() > textLimit) {
        return std::unexpected(json::Error::syntax);
    }
    return json::decode<ProposedWorkspace>(answer);
}

void fromJson(const json::Value& object, ProposedWorkspace& proposal) {
    json::require(object, "name", proposal.name);
    json::require(object, "symbol", proposal.symbol);
    json::require(object, "needs", proposal.needs);
    json::require(object, "apps", proposal.apps);
    json::require(object, "links", proposal.links);
    json::require(object, "arrangement", proposal.arrangement);
    json::require(object, "hideOtherApps", proposal.hideOtherApps);
    json::require(object, "existingWorkspace", proposal.existingWorkspace);
    json::require(object, "gridLayout", proposal.gridLayout);
    json::require(object, "reason", proposal.reason);
}

} // namespace vellory
