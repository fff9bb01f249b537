// The authoring kernel: its administration interface, the project and the project's metadata.
// Early-bound; indices count the methods of IUnknown and IDispatch.
#pragma once

#include "components/ComponentIds.h"
#include "components/Contract.h"

namespace zt {

struct KernelProject;
struct MetadataCollection;
struct MetadataItem;

// clang-format off
// operation                       index  arguments
#define ZT_KERNEL_ADMIN(METHOD)                                                   \
    METHOD(ShutDown,                  17, LONG /* -1 */)                          \
    METHOD(LoadTypes,                 33, BSTR /* path */)                        \
    METHOD(LoadDeclarations,          34, BSTR /* path */)                        \
    METHOD(SetSaveMode,               35, LONG /* 1 */)                           \
    METHOD(CloseProjects,             42, LONG /* -1 */)                          \
    METHOD(PutClientName,             49, BSTR)                                   \
    METHOD(SetProjectsLocation,       64, BSTR /* folder, may be null */)         \
    METHOD(OpenProject,               66, LONG /* -1 */, BSTR /* open path */, KernelProject**) \
    METHOD(LoadRefTables,             85, BSTR /* path */)                        \
    METHOD(LoadMetadata,              86, BSTR /* path */)                        \
    METHOD(LoadCommandTemplates,      87, BSTR /* path */)                        \
    METHOD(GetSpecificationFolder,    89, BSTR* /* folder */)                     \
    METHOD(PutSpecificationFolder,    90, BSTR /* folder */)                      \
    METHOD(LoadRefTablesBackup,       91, BSTR /* path */)                        \
    METHOD(SelectProduct,             97, LONG /* product code */)

#define ZT_KERNEL_PROJECT(METHOD)                                                 \
    METHOD(GetStoredName,              7, BSTR*)                                  \
    METHOD(GetNodeTree,               10, IUnknown** /* root */)                  \
    METHOD(Load,                      15, LONG /* 0 */)                           \
    METHOD(Rename,                    22, BSTR /* new name */)                    \
    METHOD(GetDeclaration,            35, BSTR /* metadata name */, IDispatch** /* null if none */) \
    METHOD(GetDocumentName,           36, BSTR* /* empty without a document */)   \
    METHOD(GetMetadata,               44, MetadataCollection**)                   \
    METHOD(InsertMetadata,            45, LONG /* -1 */, IDispatch* /* declaration */, MetadataItem**) \
    METHOD(StartNewRevision,          49)                                         \
    METHOD(GetSpecificationName,      50, BSTR*)                                  \
    METHOD(GetSpecificationVersion,   52, BSTR*)                                  \
    METHOD(GetConfigurationKey,       54, BSTR*)                                  \
    METHOD(AttachDocument,            59, BSTR /* full path */, BSTR /* document handler */) \
    METHOD(GenerateDocument,          61, BSTR /* document handler */)            \
    METHOD(GetLanguage,               64, BSTR*)                                  \
    METHOD(PutLanguage,               65, BSTR)

#define ZT_METADATA_COLLECTION(METHOD)                                            \
    METHOD(FindItem,                   7, VARIANT /* declaration as VT_DISPATCH */, MetadataItem** /* or null */)

#define ZT_METADATA_ITEM(METHOD)                                                  \
    METHOD(SetValue,                   9, BSTR)                                   \
    METHOD(GetValue,                  12, VARIANT* /* VT_EMPTY when unset */)
// clang-format on

// Class CLSID_KernelAdmin, interface IID_KernelAdmin.
struct KernelAdmin : IDispatch {
    static constexpr char Name[] = "KernelAdmin";
    static constexpr const IID& Iid = IID_KernelAdmin;
    ZT_CONTRACT(ZT_KERNEL_ADMIN, ZT_EARLY_BOUND)
};

struct KernelProject : IDispatch {
    static constexpr char Name[] = "KernelProject";
    ZT_CONTRACT(ZT_KERNEL_PROJECT, ZT_EARLY_BOUND)
};

struct MetadataCollection : IDispatch {
    static constexpr char Name[] = "MetadataCollection";
    ZT_CONTRACT(ZT_METADATA_COLLECTION, ZT_EARLY_BOUND)
};

struct MetadataItem : IDispatch {
    static constexpr char Name[] = "MetadataItem";
    ZT_CONTRACT(ZT_METADATA_ITEM, ZT_EARLY_BOUND)
};

} // namespace zt
