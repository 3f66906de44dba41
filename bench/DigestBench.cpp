// CRC-32 against zlib, MD5 and Base64 against OpenSSL.
#include "Engine/Common/Base/Base64.h"
#include "Engine/Common/Base/Crc32.h"
#include "Engine/Common/Base/Md5.h"

#include <benchmark/benchmark.h>
#include <openssl/evp.h>
#include <zlib.h>

#include <random>
#include <vector>

namespace qc = Quillanor::Common;

namespace {

const std::vector<unsigned char>& Bytes(std::size_t n) {
    static std::vector<unsigned char> data = [] {
        std::vector<unsigned char> v(4 << 20);
        std::mt19937 rng(42);
        for (auto& b : v) {
            b = static_cast<unsigned char>(rng());
        }
        return v;
    }();
    (void)n;
    return data;
}

void Crc32_Quillanor(benchmark::State& state) {
    const auto n = static_cast<std::size_t>(state.range(0));
    const auto& data = Bytes(n);
    unsigned c = 0;
    for (auto _ : state) {
        c = qc::crc32(c, data.data(), n);
        benchmark::DoNotOptimize(c);
    }
    state.SetBytesProcessed(static_cast<long long>(state.iterations() * n));
}

void Crc32_Zlib(benchmark::State& state) {
    const auto n = static_cast<std::size_t>(state.range(0));
    const auto& data = Bytes(n);
    uLong c = 0;
    for (auto _ : state) {
        c = ::crc32(c, data.data(), static_cast<uInt>(n));
        benchmark::DoNotOptimize(c);
    }
    state.SetBytesProcessed(static_cast<long long>(state.iterations() * n));
}

void Crc32_QuillanorTables(benchmark::State& state) {
    const auto n = static_cast<std::size_t>(state.range(0));
    const auto& data = Bytes(n);
    unsigned c = 0;
    for (auto _ : state) {
        c = qc::Detail::Crc32Portable(c, data.data(), n);
        benchmark::DoNotOptimize(c);
    }
    state.SetBytesProcessed(static_cast<long long>(state.iterations() * n));
}

void Md5_Quillanor(benchmark::State& state) {
    const auto n = static_cast<std::size_t>(state.range(0));
    const auto& data = Bytes(n);
    qc::md5_byte_t digest[16];
    for (auto _ : state) {
        qc::md5_state_t st;
        qc::md5_init(&st);
        qc::md5_append(&st, data.data(), n);
        qc::md5_finish(&st, digest);
        benchmark::DoNotOptimize(digest);
    }
    state.SetBytesProcessed(static_cast<long long>(state.iterations() * n));
}

void Md5_OpenSsl(benchmark::State& state) {
    const auto n = static_cast<std::size_t>(state.range(0));
    const auto& data = Bytes(n);
    unsigned char digest[16];
    unsigned int len = 0;
    EVP_MD_CTX* ctx = EVP_MD_CTX_new();
    const EVP_MD* md5 = EVP_md5();
    for (auto _ : state) {
        EVP_DigestInit_ex(ctx, md5, nullptr);
        EVP_DigestUpdate(ctx, data.data(), n);
        EVP_DigestFinal_ex(ctx, digest, &len);
        benchmark::DoNotOptimize(digest);
    }
    EVP_MD_CTX_free(ctx);
    state.SetBytesProcessed(static_cast<long long>(state.iterations() * n));
}

void Base64Encode_Quillanor(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    const auto& data = Bytes(std::size_t(n));
    std::vector<char16_t> out(std::size_t(qc::cBase64::EncodedLength(n)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(qc::cBase64::Encode(data.data(), n, out.data()));
    }
    state.SetBytesProcessed(state.iterations() * n);
}

void Base64Encode_OpenSsl(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    const auto& data = Bytes(std::size_t(n));
    std::vector<unsigned char> out(std::size_t(n) / 3 * 4 + 8);
    for (auto _ : state) {
        benchmark::DoNotOptimize(EVP_EncodeBlock(out.data(), data.data(), n));
    }
    state.SetBytesProcessed(state.iterations() * n);
}

void Base64Decode_Quillanor(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    const auto& data = Bytes(std::size_t(n));
    std::vector<char16_t> text(std::size_t(qc::cBase64::EncodedLength(n)));
    const int len = qc::cBase64::Encode(data.data(), n, text.data());
    std::vector<unsigned char> out(std::size_t(n) + 3);
    for (auto _ : state) {
        benchmark::DoNotOptimize(qc::cBase64::Decode(text.data(), len, out.data()));
    }
    state.SetBytesProcessed(state.iterations() * n);
}

void Base64Decode_OpenSsl(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    const auto& data = Bytes(std::size_t(n));
    std::vector<unsigned char> text(std::size_t(n) / 3 * 4 + 8);
    const int len = EVP_EncodeBlock(text.data(), data.data(), n);
    std::vector<unsigned char> out(std::size_t(n) + 3);
    for (auto _ : state) {
        benchmark::DoNotOptimize(EVP_DecodeBlock(out.data(), text.data(), len));
    }
    state.SetBytesProcessed(state.iterations() * n);
}

} // namespace

BENCHMARK(Crc32_Quillanor)->Arg(64)->Arg(4 << 10)->Arg(4 << 20);
BENCHMARK(Crc32_Zlib)->Arg(64)->Arg(4 << 10)->Arg(4 << 20);
BENCHMARK(Crc32_QuillanorTables)->Arg(64)->Arg(4 << 10)->Arg(4 << 20);
BENCHMARK(Md5_Quillanor)->Arg(64)->Arg(4 << 10)->Arg(1 << 20);
BENCHMARK(Md5_OpenSsl)->Arg(64)->Arg(4 << 10)->Arg(1 << 20);
BENCHMARK(Base64Encode_Quillanor)->Arg(60)->Arg(48 << 10);
BENCHMARK(Base64Encode_OpenSsl)->Arg(60)->Arg(48 << 10);
BENCHMARK(Base64Decode_Quillanor)->Arg(60)->Arg(48 << 10);
BENCHMARK(Base64Decode_OpenSsl)->Arg(60)->Arg(48 << 10);
