#include <corvane/app/QORDocument.h>

// A host and its rule modules agree on what an engine is; the document only hands on the pointer.
class CQorEngine {};

int main() {
    CQorEngine mesh;
    CQorEngine other;

    QORDocument document;
    document.AddEngine(u"mesh", &mesh);
    document.AddEngine(u"mesh", &other);  // The first engine of a name stays.
    document.AddEngine(u"none", nullptr);

    QORDocument copy(document);
    copy.ClearEngineMap();
    copy.AddEngine(u"Mesh", &other);

    bool right = document.GetEngine(u"mesh") == &mesh && !document.GetEngine(u"Mesh") &&
                 !document.GetEngine(u"none") && !copy.GetEngine(u"mesh") &&
                 copy.GetEngine(u"Mesh") == &other && document.isValid();
    document = copy;
    right = right && document.GetEngine(u"Mesh") == &other && !document.GetEngine(u"mesh");
    return right ? 0 : 1;
}
