#pragma once
#include <sqlite3.h>

#include <cstdint>
#include <memory>
#include <string_view>

namespace quill::sqlite {

/// A prepared statement that is kept for the life of its connection.
class Statement {
 public:
  /// An SQLite result code.
  int Prepare(sqlite3* db, const char* sql) {
    sqlite3_stmt* raw = nullptr;
    const int code = sqlite3_prepare_v3(db, sql, -1, SQLITE_PREPARE_PERSISTENT, &raw, nullptr);
    m_statement.reset(raw);
    return code;
  }
  void Finalize() { m_statement.reset(); }
  sqlite3_stmt* Raw() const { return m_statement.get(); }

 private:
  struct Deleter {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
  };
  std::unique_ptr<sqlite3_stmt, Deleter> m_statement;
};

/// One execution of a statement; its end releases the statement's locks. Bound bytes must outlive it.
class Execution {
 public:
  explicit Execution(const Statement& statement) : m_raw(statement.Raw()) {}
  ~Execution() { sqlite3_reset(m_raw); }
  Execution(const Execution&) = delete;
  Execution& operator=(const Execution&) = delete;

  Execution& Bind(int index, int64_t number) {
    sqlite3_bind_int64(m_raw, index, number);
    return *this;
  }
  Execution& BindText(int index, std::string_view text) {
    sqlite3_bind_text64(m_raw, index, NonNull(text), text.size(), SQLITE_STATIC, SQLITE_UTF8);
    return *this;
  }
  Execution& BindBlob(int index, std::string_view bytes) {
    sqlite3_bind_blob64(m_raw, index, NonNull(bytes), bytes.size(), SQLITE_STATIC);
    return *this;
  }
  int Step() { return sqlite3_step(m_raw); }

  int64_t Number(int column) const { return sqlite3_column_int64(m_raw, column); }
  /// Text or blob, valid until the next step.
  std::string_view Bytes(int column) const {
    const auto* data = static_cast<const char*>(sqlite3_column_blob(m_raw, column));
    return data == nullptr ? std::string_view()
                           : std::string_view(data, static_cast<size_t>(sqlite3_column_bytes(m_raw, column)));
  }

 private:
  /// A null pointer would bind NULL in place of the empty text.
  static const char* NonNull(std::string_view text) { return text.data() == nullptr ? "" : text.data(); }

  sqlite3_stmt* m_raw;
};

}  // namespace quill::sqlite
