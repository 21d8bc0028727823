<!doctype html>
<html lang="zh-CN">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>下载成长平台</title>
<style>
body { margin: 0; min-height: 100vh; display: grid; place-items: center; background: #eefaf4; color: #1d2733; font: 1rem/1.6 system-ui, "Noto Sans CJK SC", sans-serif; }
main { max-width: 24rem; margin: 1rem; padding: 2rem 1.5rem; background: #fff; border-radius: 20px; text-align: center; box-shadow: 0 10px 30px rgb(20 60 40 / .08); }
svg { width: 72px; }
h1 { font-size: 1.35rem; margin: .8rem 0 .3rem; }
p { margin: .3rem 0; color: #66717f; }
</style>
</head>
<body>
<main>
    <svg viewBox="0 0 72 72" aria-hidden="true"><rect width="72" height="72" rx="18" fill="#3dd187"/><path d="M36 18v26M25 34l11 11 11-11M22 54h28" fill="none" stroke="#fff" stroke-width="5" stroke-linecap="round" stroke-linejoin="round"/></svg>
    <h1>成长平台</h1>
    <p>学生版</p>
    <p>演练环境不提供安装包，请从学校指定的渠道更新。</p>
</main>
</body>
</html>
