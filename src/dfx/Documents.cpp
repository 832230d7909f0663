#include <utility>

#include <corvane/dfx/IContextFactory.h>
#include <corvane/dfx/ICriteriaFactory.h>
#include <corvane/dfx/IDocument.h>
#include <corvane/dfx/IOperatorFactory.h>

#include "dfx/Sets.h"

namespace dfx {

ISchema::ISchema(const short& type) : type_(type) {}
ISchema::ISchema(const ISchema& source) = default;
ISchema& ISchema::operator=(const ISchema& source) = default;
ISchema::~ISchema() = default;

short ISchema::type() const {
    return type_;
}

void ISchema::setup() {}
void ISchema::cleanup() {}

IDocument::IDocument() = default;
IDocument::IDocument(const IDocument& source) = default;
IDocument::~IDocument() = default;

IDocument& IDocument::operator=(const IDocument& source) {
    if (this != &source) Schemas(source.schemas_).swap(schemas_);
    return *this;
}

IDocument::Schemas::const_iterator IDocument::begin() {
    return schemas_.cbegin();
}

IDocument::Schemas::const_iterator IDocument::end() {
    return schemas_.cend();
}

IDocument::Schemas::const_iterator IDocument::begin() const {
    return schemas_.cbegin();
}

IDocument::Schemas::const_iterator IDocument::end() const {
    return schemas_.cend();
}

std::shared_ptr<ISchema> IDocument::getSchema(const short& type) {
    const Place place(schemas_, type);
    return place.taken ? *place.at : nullptr;
}

void IDocument::setSchema(const short&, std::shared_ptr<ISchema> schema) {
    if (schema) insertOrReplace(schemas_, std::move(schema));
}

void IDocument::clear() {
    Schemas().swap(schemas_);
}

IOperator::~IOperator() = default;
IOperatorFactory::~IOperatorFactory() = default;
IContextFactory::~IContextFactory() = default;
ICriteriaFactory::~ICriteriaFactory() = default;

std::shared_ptr<IResult> IOperator::execute(std::shared_ptr<IParameters>,
                                            std::shared_ptr<IResult>) {
    return nullptr;
}

std::shared_ptr<IOperator> IOperatorFactory::create(std::shared_ptr<IParameters>,
                                                    std::shared_ptr<IDocument>) {
    return nullptr;
}

}  // namespace dfx
