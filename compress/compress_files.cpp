#include "compress/CompressFiles.h"

#include <algorithm>
#include <memory>
#include <string>

#include "comm/AdLorvComm.h"
#include "compress/zip/zip_reader.h"
#include "compress/zip/zip_writer.h"
#include "framework/objects/exceptions.h"
#include "platform/ports/platform.h"
#include "report/guard.h"

// Packing and unpacking of whole lists of files, as the suite calls it. Entries are named by rules that
// older archives follow, odd ones included. An archive is always finished, even when a file in the middle
// cannot be packed.

namespace {

std::string Narrow(const CString& text) {
  return lorv::PortsInForce().code_page->ToNarrow(text.View());
}

int LastSeparator(const CString& path) {
  return std::max(path.ReverseFind('\\'), path.ReverseFind('/'));
}

// The name of the archive, which is the folder of its entries; empty for none.
CString FolderOfEntries(const CString& archive) {
  const int separator = LastSeparator(archive);
  const int point = archive.ReverseFind('.');
  // The last point of the whole path counts, also one in a folder's name.
  if (separator < 0 || point < 0) return {};
  return archive.Mid(separator + 1, point - separator - 1) + _T("\\");
}

CString EntryName(const CString& path, int point, const CString& folder) {
  CString directory;
  const CString name = Splitfilename(path, directory) + path.Mid(point);
  // The first place of the name in the path decides, which may lie in a folder of the same name.
  return path.Find(name) > 1 ? folder + name : name;
}

// Adds one file; the result of adding is not looked at.
void AddFile(lorv::ZipWriter& zip, const CString& path, const CString& folder) {
  const int point = path.ReverseFind('.');
  // Files without an extension are left out in silence.
  if (point < 0) return;
  lorv::Files& files = *lorv::PortsInForce().files;
  const auto facts = files.Facts(path);
  // A pipe or a device might have to be waited for without end.
  if (facts && facts->is_stream) throw new CFileException(CFileException::invalidFile, 0, path);
  lorv::FileError error;
  const std::unique_ptr<lorv::File> file = files.Open(path, lorv::FileUse::kRead, &error);
  if (!file) throw new CFileException(error.cause, error.system, path);
  zip.Add(Narrow(EntryName(path, point, folder)).c_str(), *file, facts ? &*facts : nullptr);
}

template <class List, class At>
int Pack(const CString& archive, const List& paths, int count, const At& at, CImpProgress* progress) {
  if (count == 0) return 0;
  lorv::ZipWriter zip;
  if (zip.Create(Narrow(archive).c_str()) != lorv::kZipOk) return 0;
  const CString folder = FolderOfEntries(archive);
  for (int i = 0; i < count; ++i) {
    if (progress != nullptr) progress->SetPos(i);
    AddFile(zip, at(paths, i), folder);
  }
  zip.Close();
  return 1;
}

int Unpack(const CString& archive, const CString& directory) {
  lorv::ZipReader zip;
  if (zip.Open(Narrow(archive).c_str()) != lorv::kZipOk) return 0;
  lorv::ZipEntry entry;
  // The index -1 asks for the number of entries.
  zip.GetItem(-1, entry);
  const int count = entry.index;
  const lorv::Platform& ports = lorv::PortsInForce();
  for (int i = 0; i < count; ++i) {
    if (zip.GetItem(i, entry) != lorv::kZipOk) return 0;
    const CString path = directory + CString(ports.code_page->ToText(entry.name));
    // A read-only file is not removed; it then cannot be created and the whole ends with 0.
    ports.files->Remove(path);
    if (zip.UnzipItem(i, Narrow(path).c_str()) != lorv::kZipOk) return 0;
    ports.files->SetAttributes(path, lorv::kAttributeNormal);
  }
  zip.Close();
  return 1;
}

}  // namespace

int CompressFiles(const CString& archive, const CStringArray& paths) {
  const auto at = [](const CStringArray& list, int i) { return list.GetAt(i); };
  return Pack(archive, paths, static_cast<int>(paths.GetSize()), at, nullptr);
}

int CompressFiles(const CString& archive, const OxArray<CString, OxVector<CString>>& paths,
                  CImpProgress* progress) {
  const auto at = [](const auto& list, int i) { return list[static_cast<std::size_t>(i)]; };
  return Pack(archive, paths, static_cast<int>(paths.size()), at, progress);
}

int DecompressFiles(const CString& archive, const CString& directory) {
  int result = 1;
  lorv::Guarded(LORV_HERE, [&] { result = Unpack(archive, directory); });
  return result;
}
