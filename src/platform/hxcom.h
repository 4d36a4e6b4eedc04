// The platform's tree, databases, object opening, and messages.
#pragma once

#include "platform/objects.h"

#include <functional>
#include <string>
#include <vector>

namespace hxcom {

// Root of the main database's tree; null when that database holds no data.
HxDbTreeNode* getDataManTreeRoot();
// Roots of the other databases that take part, each a HxDbTreeNode; false when there are none. Empties `out` first.
bool getTreeRootOfOther(std::vector<HxDbObject*>& out);
HxDbDataBase* getMainDataBase(bool = true);
const char* queryDbShortName(const HxDbDataBase* database);
// The site and the zone that hold a manager; null where there is none.
void getSizeZone(const HxDbObject* manager, HextSite*& site, HextZone*& zone);
// Number of the application module: 48, 65 (model) or 73 (P&ID).
int getCurrentModule();
// An attribute by exact key; null when the list has none.
const KVParams* findKVParamArray(const std::vector<KVParams>& list, const char* key);
// The text of the platform's last error.
const char* getLastErrorText();

// An error box, and a line on the command line.
void errorMsg(const char* text);
void printMsg(const char* text);

}  // namespace hxcom

namespace hxcad {

// Prints on the host's command line: printf rules, with %I64d beside %lld for ids. Text is in the code page.
void hextPrintf(const char* format, ...);
// Gives the function that yields the tree node of the current manager; null when there is none.
using ManagerTreeNodeFunc = HxDbTreeNode* (*)();
ManagerTreeNodeFunc getManagerTreeNodeGetFunc();
// Red in bits 0..7, green in 8..15, blue in 16..23 of a colour index.
unsigned transAcadColorIdx2RGB(int index);
// The index of the inverse colour.
int getInverseColor(int index);

}  // namespace hxcad

// A text for the user interface, translated.
const char* hextGetText_callbk(const char* text);

// Opens an object: 0 and the object, or another status and null. The last argument may be null for any database.
Hext::ErrorStatus hxdbOpenObject(HxDbObjectId id, HxDbObject*& object, HxDb::OpenMode mode,
                                 HxDbDataBase* database = nullptr);
// Opens and casts; null when either fails.
template <typename T>
T* openAs(HxDbObjectId id, HxDb::OpenMode mode = 3) {
    HxDbObject* object = nullptr;
    return hxdbOpenObject(id, object, mode) == Hext::eOk ? T::cast(object) : nullptr;
}
// The object that a node of the tree stands for; null for no node, and for an object that does not open.
inline HxDbObject* objectOfNode(const HxDbTreeNode* node) {
    return node != nullptr ? openAs<HxDbObject>(node->getTreeNodeValue(), 2) : nullptr;
}

// Every object below a node in tree order, the node's own excluded. `stop` ends the walk; `out` is emptied first.
void getAllSubObjects(const HxDbTreeNode* node, std::vector<HxDbObject*>& out, const HxDbTreeNode* stop = nullptr);
// The object of the node itself, when it passes the filter.
void getTreeNodeObject(const HxDbTreeNode* node, std::vector<HxDbObject*>& out, const HxRxClass* filter = nullptr);
// Opens a list of ids; those that open and are of the class, in order.
void transIdArray2PointerArray(const std::vector<HxDbObjectId>& ids, std::vector<HxDbObject*>& out,
                               const HxRxClass* filter = nullptr);

// The platform's system services. Texts are in the code page and belong to the platform: each stays valid until the
// next call of the same operation.
class HextSystem {
public:
    // The relative path joined to the installation root. It may begin with a slash or backslash and use either.
    // Existing names are matched without regard to case.
    static const char* getFullHextName(const char* relative);
    static void getFullHextName(const char* relative, char* buffer, int size);
    static const char* getCurrentProjName();
    static const char* getCurrentProjPath();
    static const char* getCurrentUser();
    // The installation root.
    static const char* hextEnv();
    static const char* hextFullPlatformPath();
    // An item of the current design or project; the empty text when there is none.
    static const char* getCurrentDesignItem(const char* key, bool flag);
    static const char* getCurrentProjItem(const char* key, bool flag);
};
