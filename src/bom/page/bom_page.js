"use strict";

// What the page can do beyond being read: sort, filter, fold, tick off, hide columns. Every list is a table whose
// rows stand in the document once; a row carries its level, its model, its number and whether it is an assembly.
(function() {
    const texts = {
        zh: {
            filter: "筛选",
            columns: "列",
            shown: "显示 {0} / {1}",
            done: "已完成 {0} / {1}",
            total: "数量合计 {0}",
            doneTitle: "完成",
            unfoldAll: "全部展开",
            foldAll: "全部折叠",
            help: "快捷键",
            close: "关闭",
            fold: "展开或折叠",
            keys: [
                ["↑ ↓ Home End", "上一行、下一行、首行、末行"],
                ["← →", "折叠、展开"],
                ["空格", "标记完成"],
                ["/", "筛选"],
                ["Esc", "清除筛选"],
                ["?", "本帮助"]
            ]
        },
        en: {
            filter: "Filter",
            columns: "Columns",
            shown: "{0} of {1} shown",
            done: "{0} of {1} done",
            total: "Total number {0}",
            doneTitle: "Done",
            unfoldAll: "Unfold all",
            foldAll: "Fold all",
            help: "Keys",
            close: "Close",
            fold: "Fold or unfold",
            keys: [
                ["↑ ↓ Home End", "previous, next, first, last row"],
                ["← →", "fold, unfold"],
                ["Space", "tick off"],
                ["/", "filter"],
                ["Esc", "clear the filter"],
                ["?", "this help"]
            ]
        }
    };
    const language = /^zh/i.test(navigator.language) ? "zh" : "en";
    const words = texts[language];
    const natural = new Intl.Collator("zh", {
        numeric: true,
        sensitivity: "base"
    });
    const main = document.querySelector("main");
    const lists = [];
    let active = null;

    function say(text, ...values) {
        return text.replace(/\{(\d)\}/g, (all, index) => values[index]);
    }

    function make(tag, parent, text) {
        const element = document.createElement(tag);
        if (text !== undefined) element.textContent = text;
        if (parent) parent.append(element);
        return element;
    }

    // ---- Ticks that stay in this browser; where there is no storage they last as long as the page.

    function loadTicks(key) {
        try {
            return new Set(JSON.parse(localStorage.getItem(key) || "[]"));
        } catch (error) {
            return new Set();
        }
    }

    function saveTicks(list) {
        try {
            localStorage.setItem(list.key, JSON.stringify([...list.ticks]));
        } catch (error) {
            list.key = "";
        }
    }

    // ---- A list

    function readRows(list) {
        const open = [];
        for (const element of list.body.rows) {
            const level = Number(element.dataset.l);
            while (open.length > 0 && open[open.length - 1].level >= level) open.pop();
            const parent = list.isTree && open.length > 0 ? open[open.length - 1] : null;
            const name = list.isChanges ? element.textContent : element.dataset.n;
            const row = {
                element,
                level,
                parent,
                number: Number(element.dataset.q),
                key: (parent ? parent.key + "/" : "") + name + ("a" in element.dataset ? ".a" : ""),
                children: [],
                folded: false,
                text: null
            };
            (parent ? parent.children : list.top).push(row);
            list.rows.push(row);
            list.rowOf.set(element, row);
            if (list.isTree) open.push(row);
        }
    }

    function cellText(row, column) {
        return row.element.cells[column + 1].textContent;
    }

    function addTickColumn(list) {
        const head = make("th", null, words.doneTitle);
        list.head.prepend(head);
        for (const row of list.rows) {
            const cell = document.createElement("td");
            const box = make("input", cell);
            box.type = "checkbox";
            box.tabIndex = -1;
            box.setAttribute("aria-label", words.doneTitle);
            row.box = box;
            row.element.prepend(cell);
            row.element.tabIndex = -1;
            showTick(list, row);
        }
    }

    function showTick(list, row) {
        const done = list.ticks.has(row.key);
        row.box.checked = done;
        row.element.classList.toggle("done", done);
    }

    function setTick(list, row, done) {
        if (done) list.ticks.add(row.key);
        else list.ticks.delete(row.key);
        showTick(list, row);
        saveTicks(list);
        tell(list);
    }

    function addFolds(list) {
        for (const row of list.rows) {
            if (row.children.length === 0) continue;
            const cell = row.element.querySelector(".t");
            row.fold = document.createElement("button");
            row.fold.type = "button";
            row.fold.className = "fold";
            row.fold.tabIndex = -1;
            row.fold.setAttribute("aria-label", words.fold);
            row.fold.setAttribute("aria-expanded", "true");
            cell.prepend(row.fold);
        }
    }

    function setFold(list, row, folded) {
        if (!row.fold || row.folded === folded) return;
        row.folded = folded;
        row.fold.setAttribute("aria-expanded", String(!folded));
        show(list);
    }

    // ---- What is shown

    function holds(row, wanted) {
        if (row.text === null) row.text = row.element.textContent.toLocaleLowerCase();
        return row.text.includes(wanted);
    }

    // A row with the text brings its parents along; a filter looks into what is folded as well.
    function show(list) {
        const wanted = list.filter.value.trim().toLocaleLowerCase();
        const kept = new Set();
        if (wanted !== "") {
            for (const row of list.rows) {
                if (!holds(row, wanted)) continue;
                for (let up = row; up && !kept.has(up); up = up.parent) kept.add(up);
            }
        }
        for (const row of list.rows) {
            const inside = row.parent && (row.parent.hides || row.parent.folded);
            row.hides = wanted === "" && Boolean(inside);
            const hidden = wanted === "" ? row.hides : !kept.has(row);
            if (row.element.hidden !== hidden) row.element.hidden = hidden;
        }
        tell(list);
    }

    function tell(list) {
        let shown = 0;
        let total = 0;
        let done = 0;
        for (const row of list.rows) {
            if (list.ticks.has(row.key)) ++done;
            if (row.element.hidden) continue;
            ++shown;
            total += row.number;
        }
        const parts = [say(words.shown, shown, list.rows.length), say(words.done, done, list.rows.length)];
        if (list.hasNumber) parts.push(say(words.total, total));
        list.told.textContent = parts.join(" · ");
    }

    // ---- The order

    function isNumber(text) {
        return /^[+-]?\d+(\.\d+)?$/.test(text);
    }

    // Numbers by value, then texts; what is empty comes last either way.
    function compare(one, other, isCode) {
        if (!isCode && isNumber(one) && isNumber(other)) return Number(one) - Number(other);
        if (!isCode && isNumber(one) !== isNumber(other)) return isNumber(one) ? -1 : 1;
        return natural.compare(one, other);
    }

    function sorted(list, rows) {
        if (list.sort === 0) return rows;
        const isCode = list.columns[list.column].isCode;
        const keyed = rows.map((row) => ({
            row,
            text: cellText(row, list.column)
        }));
        keyed.sort((one, other) => {
            if (one.text === "" || other.text === "") return (one.text === "") - (other.text === "");
            return list.sort * compare(one.text, other.text, isCode);
        });
        return keyed.map((entry) => entry.row);
    }

    function arrange(list) {
        const order = [];
        const add = (rows) => {
            for (const row of sorted(list, rows)) {
                order.push(row);
                if (row.children.length > 0) add(row.children);
            }
        };
        add(list.top);
        const fragment = document.createDocumentFragment();
        for (const row of order) fragment.append(row.element);
        list.body.append(fragment);
        list.columns.forEach((column, index) => {
            const sort = index === list.column ? list.sort : 0;
            const state = ["descending", "none", "ascending"][sort + 1];
            column.head.setAttribute("aria-sort", state);
        });
    }

    // Up, down, and the order of the list again.
    function sortBy(list, column) {
        if (list.column !== column) list.sort = 0;
        list.column = column;
        list.sort = list.sort === 0 ? 1 : list.sort === 1 ? -1 : 0;
        arrange(list);
    }

    // ---- Columns

    function readColumns(list) {
        list.columns = [...list.head.cells].map((head) => {
            const title = head.textContent;
            return {
                head,
                title,
                isCode: head.className === "c",
                shown: true
            };
        });
        list.hasNumber = !list.isChanges;
    }

    function addTitles(list) {
        list.columns.forEach((column, index) => {
            column.head.textContent = "";
            const button = make("button", column.head, column.title);
            button.type = "button";
            button.addEventListener("click", () => sortBy(list, index));
        });
    }

    // As wide as the texts of the first rows ask for, within bounds; Chinese characters take two places.
    function measure(list) {
        const widths = list.columns.map((column) => places(column.title) + 2);
        for (const row of list.rows.slice(0, 500)) {
            widths.forEach((width, index) => {
                const indent = row.element.cells[index].className === "t" ? 2 * Math.min(row.level, 6) + 3 : 0;
                widths[index] = Math.max(width, places(row.element.cells[index].textContent) + indent);
            });
        }
        list.columns.forEach((column, index) => {
            column.width = Math.min(Math.max(widths[index], 4), 40);
        });
    }

    function places(text) {
        let count = 0;
        for (const character of text) count += character.codePointAt(0) > 0x2e80 ? 2 : 1;
        return count;
    }

    function setWidths(list) {
        const shown = list.columns.filter((column) => column.shown);
        const widths = shown.map((column) => `minmax(${column.width}ch, ${column.width}fr)`);
        list.table.style.setProperty("--widths", ["3rem", ...widths].join(" "));
        list.table.classList.add("sized");
    }

    function addColumnChoice(list) {
        const sheet = document.styleSheets[0];
        const choice = make("details", list.controls);
        choice.className = "columns";
        make("summary", choice, words.columns);
        const box = make("div", choice);
        list.columns.forEach((column, index) => {
            const label = make("label", box);
            const tick = make("input", label);
            tick.type = "checkbox";
            tick.checked = true;
            label.append(" " + column.title);
            const rule = `#${list.table.id}.hide${index} :is(td, th):nth-child(${index + 2}) { display: none }`;
            sheet.insertRule(rule, sheet.cssRules.length);
            tick.addEventListener("change", () => {
                column.shown = tick.checked;
                list.table.classList.toggle("hide" + index, !tick.checked);
                setWidths(list);
            });
        });
    }

    // ---- Controls and keys

    function addButton(list, text, action) {
        const button = make("button", list.controls, text);
        button.type = "button";
        button.addEventListener("click", action);
    }

    function foldAll(list, folded) {
        for (const row of list.rows) {
            if (!row.fold || !row.parent && folded) continue;
            row.folded = folded;
            row.fold.setAttribute("aria-expanded", String(!folded));
        }
        show(list);
    }

    function addControls(list) {
        list.controls = document.createElement("div");
        list.controls.className = "controls";
        list.table.before(list.controls);
        const label = make("label", list.controls, words.filter + " ");
        list.filter = make("input", label);
        list.filter.type = "search";
        let waiting = 0;
        list.filter.addEventListener("input", () => {
            clearTimeout(waiting);
            // A long list waits until the typing pauses.
            if (list.rows.length > 2000) waiting = setTimeout(() => show(list), 150);
            else show(list);
        });
        addColumnChoice(list);
        if (list.isTree) {
            addButton(list, words.unfoldAll, () => foldAll(list, false));
            addButton(list, words.foldAll, () => foldAll(list, true));
        }
        addButton(list, words.help, () => document.querySelector("dialog").showModal());
        list.told = make("span", list.controls);
        list.told.className = "told";
        list.told.setAttribute("aria-live", "polite");
    }

    function moveTo(list, element) {
        if (!element) return;
        if (list.cursor) list.cursor.tabIndex = -1;
        list.cursor = element;
        element.tabIndex = 0;
        element.focus();
    }

    function nextShown(element, step) {
        let next = element[step];
        while (next && next.hidden) next = next[step];
        return next;
    }

    function firstShown(list, isLast) {
        const edge = isLast ? list.body.lastElementChild : list.body.firstElementChild;
        return edge && edge.hidden ? nextShown(edge, isLast ? "previousElementSibling" : "nextElementSibling") : edge;
    }

    function onFold(list, row, isOpening) {
        if (isOpening) setFold(list, row, false);
        else if (row.fold && !row.folded) setFold(list, row, true);
        else if (row.parent) moveTo(list, row.parent.element);
    }

    function onRowKey(list, event) {
        const row = list.rowOf.get(event.target.closest("tbody tr"));
        if (!row || event.ctrlKey || event.altKey || event.metaKey) return;
        const actions = {
            ArrowDown: () => moveTo(list, nextShown(row.element, "nextElementSibling")),
            ArrowUp: () => moveTo(list, nextShown(row.element, "previousElementSibling")),
            Home: () => moveTo(list, firstShown(list, false)),
            End: () => moveTo(list, firstShown(list, true)),
            ArrowLeft: () => onFold(list, row, false),
            ArrowRight: () => onFold(list, row, true),
            " ": () => setTick(list, row, !list.ticks.has(row.key))
        };
        const action = actions[event.key];
        if (!action) return;
        event.preventDefault();
        action();
    }

    function onPageKey(event) {
        const isTyping = event.target.type === "search";
        if (event.key === "Escape" && isTyping) {
            event.target.value = "";
            show(active);
            moveTo(active, active.cursor || firstShown(active, false));
        } else if (isTyping && (event.key === "Enter" || event.key === "ArrowDown")) {
            event.preventDefault();
            show(active);
            moveTo(active, firstShown(active, false));
        } else if (!isTyping && event.key === "/") {
            event.preventDefault();
            active.filter.focus();
        } else if (!isTyping && event.key === "?") {
            document.querySelector("dialog").showModal();
        }
    }

    function addHelp() {
        const help = make("dialog", document.body);
        const keys = make("dl", help);
        for (const [key, meaning] of words.keys) {
            make("dt", keys, key);
            make("dd", keys, meaning);
        }
        const close = make("button", help, words.close);
        close.addEventListener("click", () => help.close());
    }

    function onClick(list, event) {
        const row = list.rowOf.get(event.target.closest("tbody tr"));
        if (!row) return;
        if (event.target === row.box) setTick(list, row, row.box.checked);
        if (event.target === row.fold) setFold(list, row, !row.folded);
        moveTo(list, row.element);
    }

    function start(section, index) {
        const table = section.querySelector("table");
        table.id = "list" + index;
        const list = {
            key: "bom:" + main.dataset.key + ":" + section.dataset.form,
            isTree: section.dataset.form === "levels",
            isChanges: section.dataset.form === "changes",
            table,
            head: table.tHead.rows[0],
            body: table.tBodies[0],
            rows: [],
            top: [],
            rowOf: new Map(),
            sort: 0,
            column: 0,
            cursor: null
        };
        list.ticks = loadTicks(list.key);
        readColumns(list);
        readRows(list);
        measure(list);
        if (list.isTree) addFolds(list);
        addTitles(list);
        addTickColumn(list);
        addControls(list);
        setWidths(list);
        list.body.addEventListener("click", (event) => onClick(list, event));
        list.body.addEventListener("keydown", (event) => onRowKey(list, event));
        section.addEventListener("focusin", () => {
            active = list;
        });
        list.cursor = list.body.firstElementChild;
        if (list.cursor) list.cursor.tabIndex = 0;
        lists.push(list);
        show(list);
    }

    document.querySelectorAll("section").forEach(start);
    active = lists[0];
    addHelp();
    if (language === "en") {
        for (const element of document.querySelectorAll("[data-en]")) element.textContent = element.dataset.en;
        document.documentElement.lang = "en";
    }
    document.addEventListener("keydown", onPageKey);
}());
